// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"
#include "cli/ExitCode.h"
#include "cli/Json.h"
#include "cli/SettingDifferences.h"
#include "cli/SettingsFile.h"
#include "cli/VerbLine.h"
#include "config/Product.h"

namespace {

QList<Difference> differencesOf(const SettingsFile &first, const SettingsFile &second)
{
    QList<Difference> differences;
    if (first.product != second.product)
        differences.append({QStringLiteral("product"), first.product->word, second.product->word});
    differences += settingDifferences(first.settings, second.settings);
    return differences;
}

QJsonObject fileObject(const QString &path, const SettingsFile &file)
{
    return {{QStringLiteral("file"), path},
            {QStringLiteral("kind"), file.kind},
            {QStringLiteral("product"), file.product->word}};
}

QJsonObject outcomeObject(const VerbLine &line, const SettingsFile &first, const SettingsFile &second,
                          const QList<Difference> &differences)
{
    QJsonObject object{{QStringLiteral("same"), differences.isEmpty()},
                       {QStringLiteral("first"), fileObject(line.operandPath(0), first)},
                       {QStringLiteral("second"), fileObject(line.operandPath(1), second)},
                       {QStringLiteral("differences"), differencesArray(differences)}};
    insertWarnings(object, first.warnings + second.warnings);
    return object;
}

int trouble(const Problem &problem, Console &console)
{
    console.error(problem);
    return ExitCode::trouble;
}

int runDiff(const VerbLine &line, Console &console)
{
    const Result<SettingsFile> first = readSettings(line.operandPath(0));
    if (!first)
        return trouble(first.problem(), console);
    const Result<SettingsFile> second = readSettings(line.operandPath(1));
    if (!second)
        return trouble(second.problem(), console);
    const QList<Difference> differences = differencesOf(*first, *second);
    if (line.isSet(OptionName::json))
        console.writeJson(outcomeObject(line, *first, *second, differences));
    else
        writeLines(differences, console);
    console.warn(first->warnings + second->warnings);
    return differences.isEmpty() ? ExitCode::done : ExitCode::different;
}

} // namespace

Verb diffVerb()
{
    Verb verb{QLatin1String("diff"), QLatin1String("say in which settings two files differ"), runDiff};
    verb.description = QStringLiteral(
        "Says in which settings two files differ, one a line with both values. Exit code 0 when they "
        "are the same, 1 when they differ, 2 when that cannot be said.");
    verb.options = {jsonOption()};
    const QString kinds = QStringLiteral("a configuration document, a profile or a customized package");
    verb.operands = {{Value::settings("A"), kinds}, {Value::settings("B"), kinds}};
    verb.trouble = ExitCode::trouble;
    return verb;
}
