// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"
#include "cli/SignedOutput.h"
#include "cli/Verb.h"
#include "cli/VerbLine.h"
#include "package/signature/Notarization.h"

namespace {

SignedOutcome notarize(const VerbLine &line)
{
    const QString package = line.operandPath();
    if (!canNotarize())
        return {Problem{package,
                        QStringLiteral("packages are notarized on a Mac only; take it to one with Xcode's "
                                       "command-line tools and run \"pct notarize\" there")},
                {}};
    if (const Result<> usable = checkSignedPaths(line); !usable)
        return {usable, {}};
    OutputFile output = signedOutput(line);
    return {notarizePackage(package, line.value(OptionName::keychainProfile), &output), {}};
}

QJsonObject notarizeRefusal(const VerbLine &line, const Problem &problem)
{
    return signedOutcomeObject(line, {problem, {}});
}

int runNotarize(const VerbLine &line, Console &console)
{
    console.setQuiet(line.isSet(OptionName::quiet));
    return tellSignedOutcome(line, notarize(line), console);
}

} // namespace

Verb notarizeVerb()
{
    Verb verb{QLatin1String("notarize"), QLatin1String("have Apple notarize a signed package"), runNotarize};
    verb.description =
        QStringLiteral("On a Mac, submits the signed PKG to Apple's notary service, waits for the verdict, "
                       "and makes a copy to "
                       "which the ticket is stapled. Elsewhere it says where that can be done.");
    verb.options = {
        required({OptionName::output, QStringLiteral("the notarized package to make"), Value::package()}),
        required(
            withRemark({OptionName::keychainProfile,
                        QStringLiteral("where the keychain holds the credentials"), Value::text("NAME")},
                       QStringLiteral(", the name that was given to `xcrun notarytool store-credentials`"))),
    };
    verb.options += signedOutputOptions(QStringLiteral(", also when it fails"));
    verb.operands = {{Value::package(), QStringLiteral("the signed package; it is never changed")}};
    verb.refusal = notarizeRefusal;
    return verb;
}
