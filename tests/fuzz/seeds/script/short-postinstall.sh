mydir=$(pwd)
# Obtain the current logged-in user's username through the HOME environment variable
currentuser=$(stat -f "%Su" /dev/console)
fi
appdatePath="$HOME/Library/Application Support/Pelix Software/${ApplicationDataType}/${ApplicationName}"
