// SPDX-License-Identifier: Apache-2.0
#include "package/signature/PackageSigning.h"

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
    if (signing.strictKeys)
        options.append(QStringLiteral("--strict-keys"));
    return options;
}

/// The stand-in says nothing else there when it signs.
QStringList remarksOnKeys(const QByteArray &standardError)
{
    return QString::fromUtf8(standardError).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}
