// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"
#include "cli/ExitCode.h"
#include "cli/Json.h"
#include "cli/PackageJob.h"
#include "cli/Product.h"
#include "cli/Verb.h"

namespace {

/// How a build ended, after all that it had made for itself is gone.
struct Outcome
{
    Verdict problem;
    QList<FileWarning> warnings;
    QString productVersion;
};

PackageRequest requestOf(const VerbLine &line)
{
    PackageRequest request;
    request.product = &line.product();
    request.input = line.path(QStringLiteral("input"));
    request.output = line.path(QStringLiteral("output"));
    request.config = line.path(QStringLiteral("config"));
    request.keptDocument = line.path(QStringLiteral("keep-config"));
    request.force = line.isSet(QStringLiteral("force"));
    return request;
}

Outcome outcomeOf(const PackageRequest &request)
{
    PackageJob job(request);
    const Verdict problem = job.run();
    return {problem, job.warnings(), job.productVersion()};
}

QJsonObject outcomeObject(const PackageRequest &request, const Outcome &outcome)
{
    return {
        {QStringLiteral("succeeded"), !outcome.problem},
        {QStringLiteral("problem"), outcome.problem ? problemObject(*outcome.problem) : QJsonValue()},
        {QStringLiteral("product"), request.product->word},
        {QStringLiteral("version"), textOrNull(outcome.productVersion)},
        {QStringLiteral("input"), request.input},
        {QStringLiteral("output"), request.output},
        {QStringLiteral("config"), textOrNull(request.config)},
        {QStringLiteral("keptDocument"), textOrNull(request.keptDocument)},
        {QStringLiteral("warnings"), warningsArray(outcome.warnings)},
    };
}

void writeOutcome(const PackageRequest &request, const Outcome &outcome, bool asJson, Console &console)
{
    if (!outcome.problem)
        console.setMade(request.output);
    if (asJson)
        console.writeJson(outcomeObject(request, outcome));
    else if (!outcome.problem)
        console.confirm(request.output);
    console.warn(outcome.warnings);
    if (outcome.problem)
        console.error(*outcome.problem);
}

QCommandLineOption fileOption(const QString &name, const QString &valueName, const QString &description)
{
    return {name, description, valueName};
}

QList<QCommandLineOption> buildOptions()
{
    const QString package = QStringLiteral("PKG");
    return {
        CommonOption::product(),
        fileOption(QStringLiteral("input"), package, QStringLiteral("The vendor's installer package.")),
        fileOption(QStringLiteral("output"), package, QStringLiteral("The package to make.")),
        fileOption(QStringLiteral("config"), QStringLiteral("DOC"),
                   QStringLiteral("Configuration document with the settings; without it the defaults.")),
        fileOption(QStringLiteral("keep-config"), QStringLiteral("PATH"),
                   QStringLiteral("Keep a copy of the document that the package carries.")),
        {QStringLiteral("force"), QStringLiteral("Replace an existing output and kept document.")},
        CommonOption::json(),
        CommonOption::quiet(),
    };
}

VerbSyntax buildSyntax()
{
    VerbSyntax syntax;
    syntax.name = QStringLiteral("build");
    syntax.synopsis = QStringLiteral("--product editor|reader --input PKG --output PKG [--config DOC] "
                                     "[--keep-config PATH] [--force] [--json] [-q]");
    syntax.description = QStringLiteral("Makes a customized installer package from the vendor's. The output "
                                        "appears only when it is complete.");
    syntax.options = buildOptions();
    syntax.requiredOptions =
        QStringList{QStringLiteral("product"), QStringLiteral("input"), QStringLiteral("output")};
    return syntax;
}

int runBuild(const VerbLine &line, Console &console)
{
    console.setQuiet(line.isSet(QStringLiteral("quiet")));
    const PackageRequest request = requestOf(line);
    const Outcome outcome = outcomeOf(request);
    writeOutcome(request, outcome, line.isSet(QStringLiteral("json")), console);
    return outcome.problem ? ExitCode::refused : ExitCode::done;
}

} // namespace

Verb buildVerb()
{
    return {QLatin1String("build"), QLatin1String("make a customized installer package"), buildSyntax,
            runBuild};
}
