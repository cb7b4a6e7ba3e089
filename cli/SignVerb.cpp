// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"
#include "cli/SignedOutput.h"
#include "cli/SigningOptions.h"
#include "cli/Verb.h"
#include "cli/VerbLine.h"

namespace {

SignedOutcome sign(const VerbLine &line)
{
    if (const Result<> signable = canSignPackages(); !signable)
        return {signable, {}};
    if (const Result<> usable = checkSignedPaths(line); !usable)
        return {usable, {}};
    OutputFile output = signedOutput(line);
    const Result<QStringList> made =
        signPackage(line.operandPath(), signingFrom(line, OptionName::identity), &output);
    return made ? SignedOutcome{{}, signingWarnings(*made)} : SignedOutcome{made.problem(), {}};
}

QJsonObject signRefusal(const VerbLine &line, const Problem &problem)
{
    return signedOutcomeObject(line, {problem, {}});
}

int runSign(const VerbLine &line, Console &console)
{
    console.setQuiet(line.isSet(OptionName::quiet));
    return tellSignedOutcome(line, sign(line), console);
}

} // namespace

Verb signVerb()
{
    Verb verb{QLatin1String("sign"), QLatin1String("sign an installer package"), runSign};
    verb.description = QStringLiteral(
        "Makes a signed copy of PKG, without an earlier signature and a stapled ticket. It takes the place "
        "of the output only when its signature holds.");
    verb.options = {
        required({OptionName::output, QStringLiteral("the signed package to make"), Value::package()}),
        required(withRemark({OptionName::identity, QStringLiteral("who signs"), Value::identity()},
                            QStringLiteral(", one that `pct identities` lists for packages"))),
    };
    verb.options += signingOptions();
    verb.options += signedOutputOptions(QStringLiteral(", also when the signing fails"));
    verb.operands = {
        {Value::package(), QStringLiteral("the installer package to sign; it is never changed")}};
    verb.refusal = signRefusal;
    return verb;
}
