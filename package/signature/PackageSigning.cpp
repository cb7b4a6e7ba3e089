// SPDX-License-Identifier: Apache-2.0
#include "package/signature/PackageSigning.h"

#include "core/Command.h"
#include "core/OutputFile.h"
#include "package/signature/SignatureReport.h"

#include <algorithm>

namespace {

Problem notSigned(const QString &package, const QString &why)
{
    return {package,
            QStringLiteral("cannot be signed: %1; \"pct identities --for packages\" lists who can sign")
                .arg(why)};
}

Result<QStringList> runProductSign(const QString &package, const PackageSigning &signing,
                                   const QString &output)
{
    const CommandResult result =
        Command::run(packageSigningCommand(),
                     productSignOptions(signing) +
                         QStringList{QStringLiteral("--sign"), signing.identity, package, output});
    if (!result.succeeded())
        return notSigned(package, result.problem());
    return remarksOnKeys(result.standardError);
}

/// Nobody needs to trust the chain here, but a signature that does not hold is worse than none.
Result<> judge(const QString &package, const PackageSigning &signing, const QString &signedPackage)
{
    const Result<SignatureReport> report = reportSignature(signedPackage, {});
    if (!report)
        return notSigned(package, report.problem().text);
    if (!report->isSigned)
        return notSigned(package, QStringLiteral("the new package has no signature"));
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

QString packageSigningCommand()
{
    return QStringLiteral("/usr/bin/productsign");
}

QStringList identitiesForPackages(const QStringList &identities)
{
    QStringList found;
    std::copy_if(identities.begin(), identities.end(), std::back_inserter(found), isForPackages);
    return found;
}

Result<QStringList> signPackage(const QString &package, const PackageSigning &signing, OutputFile *output)
{
    if (const Result<> staged = output->stage(); !staged)
        return staged.problem();
    Result<QStringList> made = runProductSign(package, signing, output->stagedPath());
    if (!made)
        return made;
    if (const Result<> judged = judge(package, signing, output->stagedPath()); !judged)
        return judged.problem();
    if (const Result<> placed = output->place(); !placed)
        return placed.problem();
    return made;
}
