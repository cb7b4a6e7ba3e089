// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"
#include "cli/ExitCode.h"
#include "cli/Json.h"
#include "cli/LintedFiles.h"
#include "cli/VerbLine.h"
#include "config/Product.h"
#include "core/PrintableText.h"

#include <algorithm>

namespace {

using Lint::FileFindings;
using Lint::Finding;

QString placeText(const FileFindings &file, const TextPlace &place)
{
    if (!place.isKnown())
        return {};
    return file.member.isEmpty() ? QStringLiteral("%1:%2:").arg(place.line).arg(place.column)
                                 : QStringLiteral(" (%1, %2):").arg(file.member, place.text());
}

void writeLine(const FileFindings &file, const Finding &finding, Console &console)
{
    const QString place = placeText(file, finding.remark.place);
    console.out() << visibleText(file.file)
                  << (place.startsWith(QLatin1Char(' ')) ? QString() : QStringLiteral(":")) << place << ' '
                  << Lint::wordOf(finding.rule->severity) << QStringLiteral(": ")
                  << visibleText(finding.remark.text) << QStringLiteral(" [") << finding.rule->code << "]\n";
}

QJsonValue numberOrNull(int number)
{
    return number > 0 ? QJsonValue(number) : QJsonValue(QJsonValue::Null);
}

QJsonObject findingObject(const FileFindings &file, const Finding &finding)
{
    return {{QStringLiteral("file"), file.file},
            {QStringLiteral("member"), textOrNull(file.member)},
            {QStringLiteral("line"), numberOrNull(finding.remark.place.line)},
            {QStringLiteral("column"), numberOrNull(finding.remark.place.column)},
            {QStringLiteral("code"), finding.rule->code},
            {QStringLiteral("severity"), Lint::wordOf(finding.rule->severity)},
            {QStringLiteral("text"), finding.remark.text}};
}

QJsonObject outcomeObject(const LintOutcome &outcome)
{
    QJsonArray findings;
    for (const FileFindings &file : outcome.files) {
        for (const Finding &finding : file.findings)
            findings.append(findingObject(file, finding));
    }
    QJsonArray problems;
    for (const Problem &problem : outcome.problems)
        problems.append(problemOrNull(problem));
    return {{QStringLiteral("findings"), findings}, {QStringLiteral("problems"), problems}};
}

void write(const LintOutcome &outcome, const VerbLine &line, Console &console)
{
    if (line.isSet(OptionName::json))
        return console.writeJson(outcomeObject(outcome));
    if (line.isSet(OptionName::sarif))
        return console.writeJson(Lint::sarifLog(outcome.files, outcome.problems));
    for (const FileFindings &file : outcome.files) {
        for (const Finding &finding : file.findings)
            writeLine(file, finding, console);
    }
}

bool isToBeMended(const FileFindings &file)
{
    return std::any_of(file.findings.begin(), file.findings.end(),
                       [](const Finding &finding) { return finding.rule->severity != Lint::Severity::Note; });
}

int exitCodeOf(const LintOutcome &outcome)
{
    if (!outcome.problems.isEmpty())
        return ExitCode::trouble;
    return std::any_of(outcome.files.begin(), outcome.files.end(), isToBeMended) ? ExitCode::different
                                                                                 : ExitCode::done;
}

int runLint(const VerbLine &line, Console &console)
{
    const Product *product = line.isSet(OptionName::product) ? &line.product() : nullptr;
    const LintOutcome outcome = lintedFiles(line.operands(), product);
    write(outcome, line, console);
    for (const Problem &problem : outcome.problems)
        console.error(problem);
    return exitCodeOf(outcome);
}

} // namespace

Verb lintVerb()
{
    Verb verb{QLatin1String("lint"), QLatin1String("say what is wrong with files of settings"), runLint};
    verb.description = QStringLiteral(
        "Looks for what has no effect or can hardly be meant in configuration documents, profiles, "
        "customized "
        "packages and JSON of settings, one finding a line with place, severity and code. Exit code 0 when "
        "there is no error and no warning, 1 when there is one, 2 when a file could not be looked at.");
    verb.options = {productOption(QStringLiteral("the product of JSON that names none"))};
    verb.options += alternatives(
        {jsonOption(), {OptionName::sarif, QStringLiteral("write a SARIF log for code scanning")}});
    verb.operands = {{Value::settingsOrProject("FILE"), QStringLiteral("the files to look at"), false, true}};
    verb.trouble = ExitCode::trouble;
    return verb;
}
