// SPDX-License-Identifier: Apache-2.0
#include "cli/PackageSigning.h"

Option timestampOption()
{
    return {OptionName::timestamp, QStringLiteral("ask this timestamp service of RFC 3161, too"),
            Value::text("URL")};
}

/// The stand-in lists no others.
bool isForPackages(const QString &)
{
    return true;
}

QStringList productSignOptions(const PackageSigning &signing)
{
    QStringList options{QStringLiteral("--timestamp=") +
                        (signing.isTimestamped ? signing.timestampService : QStringLiteral("none"))};
    if (signing.anyCertificate)
        options.append(QStringLiteral("--allow-any-certificate"));
    return options;
}
