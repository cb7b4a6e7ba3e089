// SPDX-License-Identifier: Apache-2.0
#include "package/signature/PackageSigning.h"

bool isForPackages(const QString &identity)
{
    return identity.startsWith(QLatin1String("Developer ID Installer:"));
}

/// The command asks its service by itself for some certificates, unless it is told not to.
QStringList productSignOptions(const PackageSigning &signing)
{
    return {signing.isTimestamped ? QStringLiteral("--timestamp") : QStringLiteral("--timestamp=none")};
}

/// Keys lie in a keychain, which guards them.
QStringList remarksOnKeys(const QByteArray &)
{
    return {};
}
