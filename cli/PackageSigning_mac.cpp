// SPDX-License-Identifier: Apache-2.0
#include "cli/PackageSigning.h"

Option timestampOption()
{
    return {OptionName::timestamp, QStringLiteral("ask Apple's timestamp service, too")};
}

bool isForPackages(const QString &identity)
{
    return identity.startsWith(QLatin1String("Developer ID Installer:"));
}

/// The command asks its service by itself for some certificates, unless it is told not to.
QStringList productSignOptions(const PackageSigning &signing)
{
    return {signing.isTimestamped ? QStringLiteral("--timestamp") : QStringLiteral("--timestamp=none")};
}
