#!/bin/bash
# Pelix PDF Editor

ApplicationDataType="Pelix PDF"
ApplicationName="Editor"
bundleIdentifier="com.pelix-software.Pelix.PDF.Editor"
bigversion="2026.1.0"
productVersion="$bigversion"

# Runs after the new files are in place: sets the product up for the user.

mydir=$(pwd)

# Switches for managed deployments
editorXmlFileCopy=0
setdefaultpdf=0
plistValue="General/CheckForUpdates:1;General/ShowWelcomePage:1;"

# Obtain the current logged-in user's username through the HOME environment variable
currentuser=$(basename "${HOME}")
if [ -z "$currentuser" ] || [ "$currentuser" == "root" ]; then
    currentuser=$(stat -f "%Su" /dev/console)
fi

appdatePath="$HOME/Library/Application Support/Pelix Software/${ApplicationDataType}/${ApplicationName}"
preferences="$HOME/Library/Preferences/${bundleIdentifier}"

asUser() {
    sudo -u "$currentuser" "$@"
}

installDocument() {
    cp "$mydir/ProfStore.xml" "$appdatePath/ProfStore.xml" || return 1
    chown "$currentuser" "$appdatePath/ProfStore.xml"
}

makeDefaultViewer() {
    (cd "$mydir" && asUser ./duti -s "$bundleIdentifier" com.adobe.pdf all)
}

# Each entry of the list is key/name:value and ends with a semicolon.
writePreferences() {
    local IFS=';' entry
    for entry in $plistValue; do
        asUser defaults write "$preferences" "${entry%%:*}" "${entry#*:}" || return 1
    done
}

echo "Setting up ${ApplicationName} ${productVersion} for ${currentuser}"
asUser mkdir -p "$appdatePath" || exit 1

if [ "$editorXmlFileCopy" = 1 ]; then
    installDocument || exit 1
fi

if [ "$setdefaultpdf" = 1 ]; then
    # The product works without this, so the installation goes on.
    makeDefaultViewer || echo "Cannot make ${ApplicationName} the default PDF viewer."
fi

writePreferences || exit 1
exit 0
