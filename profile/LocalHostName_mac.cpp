// SPDX-License-Identifier: Apache-2.0
#include "profile/LocalHostName.h"

#include <SystemConfiguration/SystemConfiguration.h>

QString localHostName()
{
    const CFStringRef name = SCDynamicStoreCopyLocalHostName(nullptr);
    if (!name)
        return QString();
    const QString copy = QString::fromCFString(name);
    CFRelease(name);
    return copy;
}
