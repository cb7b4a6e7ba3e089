// SPDX-License-Identifier: Apache-2.0
#include "cli/SignedOutput.h"

#include "cli/Console.h"
#include "cli/InputFile.h"
#include "cli/Json.h"
#include "cli/SignatureCheck.h"
#include "cli/VerbLine.h"
#include "core/PathRules.h"

Result<> checkSignedPaths(const VerbLine &line)
{
    const QString package = line.operandPath();
    const QString output = line.path(OptionName::output);
    if (Result<> file = checkFile(package, FileKind::Package, QStringLiteral("an installer package")); !file)
        return file;
    if (Result<> different =
            PathRules::allDiffer({{QStringLiteral("package"), package}, {QStringLiteral("output"), output}});
        !different)
        return different;
    return checkWritable(output, line.isSet(OptionName::force));
}

OutputFile signedOutput(const VerbLine &line)
{
    const bool force = line.isSet(OptionName::force);
    return OutputFile(line.path(OptionName::output),
                      force ? OutputFile::Existing::Replace : OutputFile::Existing::Keep);
}

QJsonObject signedOutcomeObject(const VerbLine &line, const SignedOutcome &outcome)
{
    const QString output = line.path(OptionName::output);
    const Result<SignatureReport> report =
        outcome.result ? signatureOf(output, {}) : outcome.result.problem();
    return {
        {QStringLiteral("succeeded"), bool(outcome.result)},
        {QStringLiteral("problem"), problemOrNull(outcome.result)},
        {QStringLiteral("file"), line.operandPath()},
        {QStringLiteral("output"), output},
        {QStringLiteral("signature"), report ? QJsonValue(signatureObject(*report)) : QJsonValue()},
        {QStringLiteral("warnings"), warningsArray(outcome.warnings)},
    };
}

int tellSignedOutcome(const VerbLine &line, SignedOutcome outcome, Console &console)
{
    outcome.result = console.told(outcome.result);
    return console.writeOutcome(line.path(OptionName::output), outcome.result, outcome.warnings,
                                line.isSet(OptionName::json),
                                [&] { return signedOutcomeObject(line, outcome); });
}

QList<Option> signedOutputOptions(const QString &whenItFails)
{
    return {
        {OptionName::force, QStringLiteral("replace an output that exists already")},
        withRemark(jsonOption(), whenItFails),
        quietOption(),
    };
}
