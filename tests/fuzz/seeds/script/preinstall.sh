#!/bin/bash
# Pelix PDF Editor

ApplicationDataType="Pelix PDF"
ApplicationName="Editor"
bundleIdentifier="com.pelix-software.Pelix.PDF.Editor"
bigversion="2026.1.0"
productVersion="$bigversion"

# Runs before the new files are put in place: tidies up what an earlier version left behind.

mydir=`pwd`

# Obtain the current logged-in user's username through the HOME environment variable
user_from_home=$(basename "${HOME}")
if [ "${user_from_home}" != "root" ]; then
    currentuser="${user_from_home}"
else
    currentuser=$(stat -f "%Su" /dev/console)
fi

userData="$HOME/Library/Application Support/Pelix Software/${ApplicationDataType}/${ApplicationName}"

keepPreviousDocument() {
    [ -f "$userData/ProfStore.xml" ] || return 0
    cp "$userData/ProfStore.xml" "$userData/ProfStore.previous.xml" || return 1
    chown "$currentuser" "$userData/ProfStore.previous.xml"
}

removeLegacyPlugins() {
    while IFS= read -r plugin; do
        [ -n "$plugin" ] && rm -rf "$userData/Plug-ins/$plugin"
    done < "$mydir/legacy-plugins.txt"
}

echo "Preparing ${ApplicationName} ${productVersion}"
keepPreviousDocument || exit 1
[ -f "$mydir/legacy-plugins.txt" ] || exit 1
removeLegacyPlugins
exit 0
