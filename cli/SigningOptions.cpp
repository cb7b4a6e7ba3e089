// SPDX-License-Identifier: Apache-2.0
#include "cli/SigningOptions.h"

#include "cli/HostCommands.h"
#include "cli/VerbLine.h"

QList<Option> signingOptions()
{
    return {{OptionName::allowAnyCertificate,
             QStringLiteral("sign also with a certificate that is not for installer packages, where the "
                            "computers trust it nevertheless")},
            {OptionName::strictKeys, QStringLiteral("refuse a key that others can read")},
            timestampOption()};
}

PackageSigning signingFrom(const VerbLine &line, QLatin1String identityOption)
{
    PackageSigning signing;
    signing.identity = line.value(identityOption);
    signing.anyCertificate = line.isSet(OptionName::allowAnyCertificate);
    signing.strictKeys = line.isSet(OptionName::strictKeys);
    signing.isTimestamped = line.isSet(OptionName::timestamp);
    signing.timestampService = line.value(OptionName::timestamp);
    return signing;
}

Result<> canSignPackages()
{
    return haveCommands({packageSigningCommand()});
}

QList<FileWarning> signingWarnings(const QStringList &remarks)
{
    return identityWarnings(remarks, QStringLiteral("productsign"));
}
