// SPDX-License-Identifier: Apache-2.0
#include "cli/PackageSigning.h"

#include "cli/HostCommands.h"
#include "cli/VerbLine.h"
#include "core/Command.h"
#include "core/OutputFile.h"
#include "package/signature/SignatureReport.h"

namespace {

Problem notSigned(const QString &package, const QString &why)
{
    return {package,
            QStringLiteral("cannot be signed: %1; \"pct identities --for packages\" lists who can sign")
                .arg(why)};
}

Result<> runProductSign(const QString &package, const PackageSigning &signing, const QString &output)
{
    const QString command = QStringLiteral("/usr/bin/productsign");
    if (Result<> there = haveCommands({command}); !there)
        return there;
    const CommandResult result =
        Command::run(command, productSignOptions(signing) +
                                  QStringList{QStringLiteral("--sign"), signing.identity, package, output});
    return result.succeeded() ? Result<>() : notSigned(package, result.problem());
}

/// Nobody needs to trust the chain here, but a signature that does not hold is worse than none.
Result<> judge(const QString &package, const PackageSigning &signing, const QString &signedPackage)
{
    const Result<SignatureReport> report = reportSignature(signedPackage, {});
    if (!report)
        return notSigned(package, report.problem().text);
    if (!report->holds())
        return notSigned(package, QStringLiteral("the new signature does not hold (%1)")
                                      .arg(report->breaks.join(QStringLiteral("; "))));
    if (!signing.anyCertificate && !report->chain.first().isForPackages)
        return notSigned(package, QStringLiteral("the certificate \"%1\" is not for installer packages")
                                      .arg(report->chain.first().name));
    if (signing.isTimestamped && !report->timestamp)
        return notSigned(package, QStringLiteral("the new signature has no timestamp"));
    return {};
}

} // namespace

PackageSigning PackageSigning::from(const VerbLine &line, QLatin1String identityOption)
{
    return {line.value(identityOption), line.isSet(OptionName::allowAnyCertificate),
            line.isSet(OptionName::timestamp), line.value(OptionName::timestamp)};
}

Option anyCertificateOption()
{
    return {OptionName::allowAnyCertificate,
            QStringLiteral("sign also with a certificate that is not for installer packages, where the "
                           "computers trust it nevertheless")};
}

Result<> signPackage(const QString &package, const PackageSigning &signing, OutputFile *output)
{
    if (Result<> staged = output->stage(); !staged)
        return staged;
    if (Result<> made = runProductSign(package, signing, output->stagedPath()); !made)
        return made;
    if (Result<> judged = judge(package, signing, output->stagedPath()); !judged)
        return judged;
    return output->place();
}
