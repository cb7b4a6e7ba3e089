// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"
#include "cli/Json.h"
#include "cli/PackageJob.h"
#include "cli/VerbLine.h"
#include "config/Product.h"

namespace {

/// How a build ended, after all that it had made for itself is gone.
struct Outcome
{
    Result<> result;
    QList<FileWarning> warnings;
    QString productVersion;
};

PackageRequest requestOf(const VerbLine &line)
{
    PackageRequest request;
    request.product = &line.product();
    request.input = line.path(OptionName::input);
    request.output = line.path(OptionName::output);
    request.config = line.path(OptionName::config);
    request.keptDocument = line.path(OptionName::keepConfig);
    request.provenance = line.path(OptionName::provenance);
    request.verifies = line.isSet(OptionName::verify);
    request.force = line.isSet(OptionName::force);
    request.demands = demandsOf(line, OptionName::vendorTeam);
    request.signing = signingFrom(line, OptionName::sign);
    return request;
}

Outcome outcomeOf(const PackageRequest &request)
{
    PackageJob job(request);
    const Result<> result = job.run();
    return {result, job.warnings(), job.productVersion()};
}

QJsonObject outcomeObject(const PackageRequest &request, const Outcome &outcome)
{
    return {
        {QStringLiteral("succeeded"), bool(outcome.result)},
        {QStringLiteral("problem"), problemOrNull(outcome.result)},
        {QStringLiteral("product"), request.product->word},
        {QStringLiteral("version"), textOrNull(outcome.productVersion)},
        {QStringLiteral("input"), request.input},
        {QStringLiteral("output"), request.output},
        {QStringLiteral("config"), textOrNull(request.config)},
        {QStringLiteral("keptDocument"), textOrNull(request.keptDocument)},
        {QStringLiteral("provenance"), textOrNull(request.provenance)},
        {QStringLiteral("verified"), request.verifies && outcome.result},
        {QStringLiteral("warnings"), warningsArray(outcome.warnings)},
    };
}

QJsonObject buildRefusal(const VerbLine &line, const Problem &problem)
{
    return outcomeObject(requestOf(line), {problem, {}, {}});
}

/// What says how to sign needs somebody who signs.
Result<> checkSigning(const VerbLine &line)
{
    for (const QLatin1String option :
         {OptionName::allowAnyCertificate, OptionName::strictKeys, OptionName::timestamp}) {
        if (line.isSet(option) && !line.isSet(OptionName::sign))
            return Problem{{}, QStringLiteral("--%1 needs --%2").arg(option, OptionName::sign)};
    }
    return {};
}

int runBuild(const VerbLine &line, Console &console)
{
    console.setQuiet(line.isSet(OptionName::quiet));
    const PackageRequest request = requestOf(line);
    Outcome outcome = outcomeOf(request);
    outcome.result = console.told(outcome.result);
    return console.writeOutcome(request.output, outcome.result, outcome.warnings,
                                line.isSet(OptionName::json),
                                [&] { return outcomeObject(request, outcome); });
}

} // namespace

Verb buildVerb()
{
    Verb verb{QLatin1String("build"), QLatin1String("make a customized installer package"), runBuild};
    verb.description = QStringLiteral(
        "Makes a customized package from the vendor's: it adds the configuration document "
        "ProfStore.xml, switches on what the settings ask for, and makes the install scripts find "
        "the user who is logged in at the console.");
    verb.options = {
        required(productOption(QStringLiteral("the product whose installer the input is"))),
        required(withRemark(
            {OptionName::input, QStringLiteral("the vendor's installer package"), Value::package()},
            QStringLiteral("; it is never changed"))),
        required({OptionName::output, QStringLiteral("the package to make"), Value::package()}),
        configOption(),
        withRemark(
            {OptionName::keepConfig,
             QStringLiteral("where to keep a copy of the document that the new package carries"),
             Value::document("PATH")},
            QStringLiteral("; written after the package is complete. When that fails, the message says that "
                           "the package exists")),
        withRemark(
            {OptionName::sign, QStringLiteral("sign the new package with this identity"), Value::identity()},
            QStringLiteral(", one that `pct identities` lists for packages. It takes the place of the "
                           "output only when its signature holds")),
    };
    verb.options += signingOptions();
    verb.options += {
        withRemark({OptionName::verify,
                    QStringLiteral("judge the new package against the vendor's before it takes its place")},
                   QStringLiteral(", as `pct verify` does with both; what does not hold is not kept")),
        withRemark({OptionName::provenance, QStringLiteral("where to state of what the new package was made"),
                    Value::json()},
                   QStringLiteral(
                       ": an in-toto statement with SLSA provenance v1, with the SHA-256 of the package, "
                       "the vendor's, the settings and the document, the version of `pct` and "
                       "SOURCE_DATE_EPOCH. Equal builds state the same, byte for byte. It is a record, and "
                       "no proof until somebody signs it")),
        {OptionName::force, QStringLiteral("replace an output and other files to make that exist already")},
        withRemark(jsonOption(), QStringLiteral(", also when the build fails")),
        quietOption(),
    };
    verb.options += demandOptions(OptionName::vendorTeam);
    verb.furtherCheck = checkSigning;
    verb.refusal = buildRefusal;
    return verb;
}
