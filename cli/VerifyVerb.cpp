// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"
#include "cli/ExitCode.h"
#include "cli/InputFile.h"
#include "cli/Json.h"
#include "cli/ResultCheck.h"
#include "cli/SignatureCheck.h"
#include "cli/VerbLine.h"

namespace {

/// What came of looking at a package.
struct Outcome
{
    Result<> verdict;
    std::optional<SignatureReport> report;
    std::optional<ResultVerification> result; ///< against the vendor's package
};

/// Whoever asks about a signature wants one that can be trusted; without any there is nothing to distrust.
SignatureDemands allDemands(const SignatureReport &report, SignatureDemands demands)
{
    demands.isSigned = demands.isSigned || report.isSigned;
    return demands;
}

Outcome verifySignature(const QString &package, const SignatureDemands &demands)
{
    if (Result<> file = checkReadable(package, QStringLiteral("an installer package")); !file)
        return {file, std::nullopt, std::nullopt};
    const Result<SignatureReport> report = signatureOf(package, demands);
    if (!report)
        return {report.problem(), std::nullopt, std::nullopt};
    return {meets(package, *report, allDemands(*report, demands)), *report, std::nullopt};
}

/// A signature that is refused does not hide what else is wrong.
Outcome verify(const VerbLine &line)
{
    Outcome outcome = verifySignature(line.operandPath(), demandsOf(line, OptionName::requireTeam));
    if (!outcome.report || !(line.isSet(OptionName::vendor) || line.isSet(OptionName::provenance)))
        return outcome;
    const ResultCheck check = checkResult(line);
    outcome.result = check.verification;
    if (outcome.verdict)
        outcome.verdict = check.verdict;
    return outcome;
}

QJsonObject outcomeObject(const QString &package, const Outcome &outcome)
{
    return {
        {QStringLiteral("file"), package},
        {QStringLiteral("accepted"), bool(outcome.verdict)},
        {QStringLiteral("problem"), problemOrNull(outcome.verdict)},
        {QStringLiteral("signature"),
         outcome.report ? QJsonValue(signatureObject(*outcome.report)) : QJsonValue()},
        {QStringLiteral("result"),
         outcome.result ? QJsonValue(verificationObject(*outcome.result)) : QJsonValue()},
    };
}

void writeOutcome(const QString &package, const Outcome &outcome, bool asJson, Console &console)
{
    if (asJson)
        return console.writeJson(outcomeObject(package, outcome));
    if (outcome.report)
        console.writeTable(QStringLiteral("Signature"), signatureRows(*outcome.report));
    if (outcome.result)
        console.writeTable(QStringLiteral("Result"), verificationRows(*outcome.result));
}

QJsonObject verifyRefusal(const VerbLine &line, const Problem &problem)
{
    return outcomeObject(line.operandPath(), {problem, std::nullopt, std::nullopt});
}

int runVerify(const VerbLine &line, Console &console)
{
    const QString package = line.operandPath();
    console.setQuiet(line.isSet(OptionName::quiet));
    Outcome outcome = verify(line);
    outcome.verdict = console.told(outcome.verdict);
    writeOutcome(package, outcome, line.isSet(OptionName::json), console);
    if (outcome.verdict && outcome.report && !outcome.report->isSigned)
        console.warning(package,
                        QStringLiteral("is not signed; --%1 refuses that").arg(OptionName::requireSigned));
    if (outcome.verdict)
        return ExitCode::done;
    console.error(outcome.verdict.problem());
    return ExitCode::refused;
}

} // namespace

Verb verifyVerb()
{
    Verb verb{
        QLatin1String("verify"),
        QLatin1String("judge the signature of a package, and whether it was customized by this tool alone"),
        runVerify};
    verb.description = QStringLiteral(
        "Says who signed PKG and whether that can be trusted. Exit code 0 when the signature holds, its "
        "chain ends in Apple's root or a given trust anchor, and the certificates are for packages and "
        "were valid when it was signed; also for a package that is not signed, unless one is required. With "
        "the vendor's package, PKG must in addition be exactly what a build makes of that one.");
    verb.options = resultOptions();
    verb.options += demandOptions(OptionName::requireTeam);
    verb.options += {jsonOption(), quietOption()};
    verb.operands = {{Value::package(), QStringLiteral("the installer package to look at")}};
    verb.furtherCheck = checkResultOptions;
    verb.refusal = verifyRefusal;
    return verb;
}
