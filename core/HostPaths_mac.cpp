// SPDX-License-Identifier: Apache-2.0
#include "core/HostPaths.h"

QString HostPaths::command(const QString &nameOrPath)
{
    return nameOrPath;
}

void HostPaths::putStandInsFirst() {}

QString HostPaths::managedPreferences()
{
    return QStringLiteral("/Library/Managed Preferences");
}
