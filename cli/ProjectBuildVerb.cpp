// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"
#include "cli/ExitCode.h"
#include "cli/Json.h"
#include "cli/ProjectBuild.h"
#include "cli/ProjectFile.h"
#include "cli/ProjectProgress.h"
#include "cli/VerbLine.h"
#include "core/SafeFile.h"
#include "project/ProjectReport.h"

#include <QFileInfo>

#include <algorithm>

namespace {

constexpr int mostJobs = 64;

Result<ProjectPlan> planOf(const VerbLine &line)
{
    const Result<Project> project = readProject(line);
    return project ? planProject(*project, line.values(OptionName::variant)) : project.problem();
}

/// Without the option as one after the other.
int jobsOf(const VerbLine &line)
{
    return line.isSet(OptionName::jobs) ? line.value(OptionName::jobs).toInt() : 1;
}

Result<> checkBuildLine(const VerbLine &line)
{
    const QStringList endings{QStringLiteral("html"), QStringLiteral("md"), QStringLiteral("json")};
    if (line.isSet(OptionName::report) &&
        !endings.contains(QFileInfo(line.path(OptionName::report)).suffix()))
        return Problem{{},
                       QStringLiteral("--%1 is a file with the ending .%2")
                           .arg(OptionName::report, endings.join(QStringLiteral(", .")))};
    const int jobs = jobsOf(line);
    if (jobs >= 1 && jobs <= mostJobs)
        return {};
    return Problem{{}, QStringLiteral("--%1 is a number from 1 to %2").arg(OptionName::jobs).arg(mostJobs)};
}

ReportedVariant reportedVariant(const VariantPlan &plan, const VariantOutcome &outcome)
{
    ReportedVariant variant{outcome.variant, plan.settings, outcome.files, {}, {}};
    for (const FileWarning &warning : outcome.warnings)
        variant.warnings += warning.warning.text;
    if (!outcome.result)
        variant.problem = outcome.result.problem().line();
    return variant;
}

Result<> writeReport(const VerbLine &line, const ProjectPlan &plan, const QList<VariantOutcome> &outcomes)
{
    QList<ReportedVariant> variants;
    for (const VariantPlan &variant : plan.variants) {
        for (const VariantOutcome &outcome : outcomes) {
            if (outcome.variant == variant.variant.name.text)
                variants.append(reportedVariant(variant, outcome));
        }
    }
    const QString path = line.path(OptionName::report);
    const ProjectReport::Format format = ProjectReport::formatNamed(QFileInfo(path).suffix());
    const Result<> written = SafeFile::replaceContents(
        path, reportOn(plan.project, plan.vendorVersion, variants).as(format), SafeFile::Lasting::No);
    return written ? written
                   : Problem{path,
                             QStringLiteral("the report cannot be written (%1)").arg(written.problem().text)};
}

QJsonObject buildRefusal(const VerbLine &, const Problem &problem)
{
    return {{QStringLiteral("event"), QStringLiteral("end")},
            {QStringLiteral("succeeded"), false},
            {QStringLiteral("problem"), problemOrNull(problem)}};
}

/// Ends a verb that has no plan.
int refuse(const VerbLine &line, const Problem &problem, int exitCode, Console &console)
{
    if (line.isSet(OptionName::json))
        console.writeJsonLine(buildRefusal(line, console.told(problem)));
    console.error(problem);
    return exitCode;
}

int runBuild(const VerbLine &line, Console &console)
{
    console.setQuiet(line.isSet(OptionName::quiet));
    const Result<ProjectPlan> plan = planOf(line);
    if (!plan)
        return refuse(line, plan.problem(), ExitCode::refused, console);
    ProjectProgress progress(console, line.isSet(OptionName::json));
    const QList<VariantOutcome> outcomes =
        buildProject(*plan, jobsOf(line),
                     {[&](const QString &variant, const QString &step) { progress.began(variant, step); },
                      [&](const VariantOutcome &outcome) { progress.ended(outcome); }});
    progress.finish(outcomes, plan->stale);
    const Result<> reported =
        line.isSet(OptionName::report) ? writeReport(line, *plan, outcomes) : Result<>();
    if (!reported)
        console.error(reported.problem());
    const bool succeeded =
        reported && std::all_of(outcomes.begin(), outcomes.end(),
                                [](const VariantOutcome &outcome) { return bool(outcome.result); });
    return succeeded ? ExitCode::done : ExitCode::refused;
}

bool isCurrent(const VariantPlan &plan)
{
    return plan.readiness && plan.changes.isEmpty();
}

QJsonObject checkObject(const ProjectPlan &plan)
{
    QJsonArray variants;
    for (const VariantPlan &variant : plan.variants)
        variants.append(QJsonObject{{QStringLiteral("variant"), variant.variant.name.text},
                                    {QStringLiteral("current"), isCurrent(variant)},
                                    {QStringLiteral("changes"), QJsonArray::fromStringList(variant.changes)},
                                    {QStringLiteral("problem"), problemOrNull(variant.readiness)}});
    return {{QStringLiteral("project"), plan.project.file},
            {QStringLiteral("variants"), variants},
            {QStringLiteral("stale"), QJsonArray::fromStringList(plan.stale)}};
}

void writeCheck(const ProjectPlan &plan, Console &console)
{
    for (const VariantPlan &variant : plan.variants) {
        const QString name = variant.variant.name.text;
        for (const QString &change : variant.changes)
            console.confirm(QStringLiteral("%1: would be made, as %2").arg(name, change));
        if (isCurrent(variant))
            console.confirm(QStringLiteral("%1: is as it should be").arg(name));
        if (!variant.readiness)
            console.error(variant.readiness.problem());
    }
    for (const QString &path : plan.stale)
        console.confirm(QStringLiteral("%1: is no output of the project any more").arg(path));
}

int runCheck(const VerbLine &line, Console &console)
{
    console.setQuiet(line.isSet(OptionName::quiet));
    const Result<ProjectPlan> plan = planOf(line);
    if (!plan)
        return refuse(line, plan.problem(), ExitCode::trouble, console);
    if (line.isSet(OptionName::json))
        console.writeJson(checkObject(*plan));
    else
        writeCheck(*plan, console);
    const auto &variants = plan->variants;
    if (!std::all_of(variants.begin(), variants.end(),
                     [](const VariantPlan &variant) { return bool(variant.readiness); }))
        return ExitCode::trouble;
    return std::all_of(variants.begin(), variants.end(), isCurrent) ? ExitCode::done : ExitCode::different;
}

Option variantOption(const QString &meaning)
{
    return repeatable({OptionName::variant, meaning, Value::text("NAME")});
}

} // namespace

Verb projectBuildVerb()
{
    Verb verb{QLatin1String("project build"), QLatin1String("make what has changed of a project"), runBuild};
    verb.description = QStringLiteral(
        "Makes the outputs of each variant whose settings, inputs or results have changed, and nothing else. "
        "The "
        "outputs of a variant take their places together, when all of them are made; those of one that fails "
        "stay what they were, and the others are still made.");
    verb.options = {
        variantOption(QStringLiteral("make only this variant")),
        {OptionName::jobs, QStringLiteral("make so many packages at a time"), Value::text("N"),
         QLatin1String("j")},
        withRemark(
            {OptionName::report, QStringLiteral("write a report about all variants"), Value::report("FILE")},
            QStringLiteral(", as HTML, Markdown or JSON by its ending; an existing one is replaced")),
        withRemark(jsonOption(), QStringLiteral(", one object a line while it runs")),
        quietOption(),
    };
    verb.operands = {projectOperand()};
    verb.furtherCheck = checkBuildLine;
    verb.refusal = buildRefusal;
    return verb;
}

Verb projectCheckVerb()
{
    Verb verb{QLatin1String("project check"), QLatin1String("tell what a build of a project would make"),
              runCheck};
    verb.description =
        QStringLiteral("Tells what \"pct project build\" would make, and makes nothing. Exit code 0 "
                       "when all is as it should be, 1 when something would be made, 2 when that "
                       "cannot be told.");
    verb.options = {variantOption(QStringLiteral("look only at this variant")), jsonOption(), quietOption()};
    verb.operands = {projectOperand()};
    verb.trouble = ExitCode::trouble;
    return verb;
}
