// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

/// The shortest install scripts that hold every line the tool relies on.
namespace VendorScripts {

inline QByteArray postinstall()
{
    return R"sh(#!/bin/bash
bigversion="13.1.2"
mydir=$(pwd)
editorXmlFileCopy=0
setdefaultpdf=0
plistValue="General/First:1;"
# Obtain the current logged-in user's username through the HOME environment variable
currentuser=$(basename "${HOME}")
if [ "$currentuser" == "root" ]; then
    currentuser=$(stat -f "%Su" /dev/console)
fi
if true; then
    echo kept
fi
appdatePath="$HOME/Library/Application Support/Pelix Software/${ApplicationDataType}/${ApplicationName}"
echo "$appdatePath"
)sh";
}

inline QByteArray preinstall()
{
    return R"sh(#!/bin/bash
mydir=`pwd`
# Obtain the current logged-in user's username through the HOME environment variable
user_from_home=$(basename "${HOME}")
if [ "${user_from_home}" == "root" ]; then
    user_from_home=nobody
fi
if true; then
    echo kept
fi
)sh";
}

} // namespace VendorScripts
