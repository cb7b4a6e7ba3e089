// SPDX-License-Identifier: Apache-2.0
#include "cli/ResultCheck.h"

#include "cli/InputFile.h"
#include "cli/Installer.h"
#include "cli/PrivateFolder.h"
#include "cli/SettingsFile.h"
#include "cli/VerbLine.h"
#include "config/Product.h"
#include "config/ProductSettings.h"
#include "core/SafeFile.h"
#include "package/verification/Provenance.h"

#include <QFileInfo>
#include <QJsonArray>

namespace {

Result<VerificationRequest> requestOf(const VerbLine &line)
{
    VerificationRequest request;
    request.result = line.operandPath();
    request.vendor = line.path(OptionName::vendor);
    request.viewerTool = line.path(OptionName::duti);
    request.depth = line.isSet(OptionName::deep) ? Depth::Deep : Depth::Shallow;
    const Result<const Product *> product = productOfInstaller(request.vendor);
    if (!product)
        return product.problem();
    request.product = *product;
    if (!line.isSet(OptionName::config))
        return request;
    const Result<SettingsFile> file = readDocument(**product, line.path(OptionName::config));
    if (!file)
        return file.problem();
    request.settings = settingsForProduct(file->settings, **product);
    return request;
}

QString placeOf(const Deviation &finding)
{
    return finding.entry.isEmpty() ? QStringLiteral("the package") : finding.entry;
}

/// The rest stands in the result.
Problem differs(const VerificationRequest &request, const Deviations &findings)
{
    const QString others =
        findings.size() == 1 ? QString() : QStringLiteral(" and %1 more").arg(findings.size() - 1);
    return {request.result,
            QStringLiteral("is not what a build makes of the vendor's package: %1 %2%3; build it again, and "
                           "do not deploy this one")
                .arg(placeOf(findings.first()), findings.first().text, others)};
}

Result<ResultVerification> verified(const VerificationRequest &request)
{
    const PrivateFolder folder;
    if (const Result<> usable = folder.check(); !usable)
        return usable.problem();
    return verifyResult(request, folder.makeSubfolder(QStringLiteral("verify")));
}

ResultCheck judged(const VerificationRequest &request, const ResultVerification &verification)
{
    const Deviations &findings = verification.findings;
    return {findings.isEmpty() ? Result<>() : Result<>(differs(request, findings)), verification};
}

Result<QByteArray> readStatement(const QString &path)
{
    constexpr qint64 largest = 1024LL * 1024;
    if (const Result<> file =
            checkReadable(path, QStringLiteral("a statement of \"pct build --provenance\""));
        !file)
        return file.problem();
    if (QFileInfo(path).size() > largest)
        return Problem{
            path, QStringLiteral("is too large for a statement; give one of \"pct build --provenance\"")};
    return SafeFile::readContents(path);
}

/// What the statement that the line names says of the files otherwise; nothing without one.
Result<Deviations> statedOtherwise(const VerbLine &line, const VerificationRequest &request)
{
    if (!line.isSet(OptionName::provenance))
        return Deviations();
    const Result<QByteArray> statement = readStatement(line.path(OptionName::provenance));
    if (!statement)
        return statement.problem();
    ProvenanceFacts known;
    known.product = request.product ? QString(request.product->word) : QString();
    const QList<QPair<StatedFile *, QString>> files{{&known.package, request.result},
                                                    {&known.vendor, request.vendor},
                                                    {&known.settings, line.path(OptionName::config)}};
    for (const auto &[file, path] : files) {
        const Result<StatedFile> stated = statedFile(path);
        if (!stated)
            return stated.problem();
        *file = *stated;
    }
    return contradictions(*statement, known);
}

} // namespace

QList<Option> resultOptions()
{
    return {
        withRemark(
            {OptionName::vendor,
             QStringLiteral("the vendor's package: judge as well whether PKG is what a build makes of it"),
             Value::package()},
            QStringLiteral(
                ". All entries but the install scripts must be the vendor's in type, size, mode and bytes; "
                "the scripts must be what the settings in PKG make of the vendor's when a build is "
                "tried again; scripts of other components, and all else, must be the vendor's. What is "
                "not is listed entry by entry")),
        withRemark({OptionName::config,
                    QStringLiteral("configuration document whose settings PKG must carry"),
                    Value::writtenSettings("DOC")},
                   QStringLiteral("; without one those in PKG are taken for what was wanted")),
        withRemark(
            {OptionName::deep, QStringLiteral("read the vendor's bytes, too")},
            QStringLiteral(
                ", instead of believing the checksums in its table. The bytes of PKG are always read")),
        withRemark(
            {OptionName::duti, QStringLiteral("the file \"duti\" that PKG may carry"), Value::text("FILE")},
            QStringLiteral(", besides the one that this tool brings")),
        withRemark({OptionName::provenance, QStringLiteral("statement of a build that PKG must agree with"),
                    Value::json()},
                   QStringLiteral("; with `--vendor` and `--config` these files must, too")),
    };
}

Result<> checkResultOptions(const VerbLine &line)
{
    for (const QLatin1String option : {OptionName::config, OptionName::deep, OptionName::duti}) {
        if (line.isSet(option) && !line.isSet(OptionName::vendor))
            return Problem{{}, QStringLiteral("--%1 needs --%2").arg(option, OptionName::vendor)};
    }
    return {};
}

ResultCheck checkResult(const VerbLine &line)
{
    Result<VerificationRequest> request{VerificationRequest()};
    if (line.isSet(OptionName::vendor))
        request = requestOf(line);
    if (!request)
        return {request.problem(), std::nullopt};
    request->result = line.operandPath();
    const Result<ResultVerification> verification = line.isSet(OptionName::vendor)
                                                        ? verified(*request)
                                                        : Result<ResultVerification>(ResultVerification());
    if (!verification)
        return {verification.problem(), std::nullopt};
    const Result<Deviations> stated = statedOtherwise(line, *request);
    if (!stated)
        return {stated.problem(), *verification};
    return judged(*request, {verification->findings + *stated, verification->entries, verification->members});
}

ResultCheck checkResult(const VerificationRequest &request)
{
    const Result<ResultVerification> verification = verified(request);
    return verification ? judged(request, *verification) : ResultCheck{verification.problem(), std::nullopt};
}

QJsonObject verificationObject(const ResultVerification &verification)
{
    QJsonArray findings;
    for (const Deviation &finding : verification.findings)
        findings.append(QJsonObject{{QStringLiteral("code"), finding.code},
                                    {QStringLiteral("entry"), finding.entry},
                                    {QStringLiteral("text"), finding.text}});
    return {{QStringLiteral("holds"), verification.findings.isEmpty()},
            {QStringLiteral("entries"), verification.entries},
            {QStringLiteral("members"), verification.members},
            {QStringLiteral("findings"), findings}};
}

QList<Console::Row> verificationRows(const ResultVerification &verification)
{
    QList<Console::Row> rows{{QStringLiteral("entries"), QString::number(verification.entries)},
                             {QStringLiteral("members of scripts"), QString::number(verification.members)},
                             {QStringLiteral("holds"), verification.findings.isEmpty()
                                                           ? QStringLiteral("yes")
                                                           : QStringLiteral("no")}};
    for (const Deviation &finding : verification.findings)
        rows.append({QStringLiteral("differs"), placeOf(finding) + QLatin1Char(' ') + finding.text});
    return rows;
}
