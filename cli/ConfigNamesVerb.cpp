// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"
#include "cli/ExitCode.h"
#include "cli/SettingValue.h"
#include "cli/VerbLine.h"
#include "config/Product.h"
#include "config/RibbonCommands.h"
#include "config/SettingText.h"

#include <QJsonArray>

#include <algorithm>

namespace {

using RibbonCommands::Command;
using SettingText::Choice;

QJsonArray productWords(bool inEditor, bool inReader)
{
    QJsonArray words;
    if (inEditor)
        words.append(Product::editor().word);
    if (inReader)
        words.append(Product::reader().word);
    return words;
}

QJsonArray choicesArray(const QList<Choice> &choices)
{
    QJsonArray array;
    for (const Choice &choice : choices)
        array.append(
            QJsonObject{{QStringLiteral("value"), choice.value}, {QStringLiteral("word"), choice.word}});
    return array;
}

QJsonObject settingObject(const Setting &setting, const Product &product)
{
    const EditorXmlData defaults;
    return {{QStringLiteral("name"), setting.name},
            {QStringLiteral("title"), setting.title},
            {QStringLiteral("meaning"), setting.meaning},
            {QStringLiteral("type"), SettingText::typeName(setting)},
            {QStringLiteral("values"), choicesArray(SettingText::choicesOf(setting, product))},
            {QStringLiteral("default"), settingValue(setting, defaults)},
            {QStringLiteral("defaultInWords"), SettingText::valueOf(setting, defaults, product)},
            {QStringLiteral("products"), productWords(true, !setting.isOnlyForEditor)},
            {QStringLiteral("help"), setting.help}};
}

bool isOffered(const Setting &setting, const Product &product)
{
    return product.isEditor() || !setting.isOnlyForEditor;
}

QString choiceText(const Choice &choice)
{
    return choice.value == choice.word ? choice.word
                                       : QStringLiteral("%1 (%2)").arg(choice.word, choice.value);
}

/// What a value of the setting looks like.
QString formOf(const Setting &setting, const Product &product)
{
    switch (setting.entries) {
    case Setting::Entries::Domains:
        return QStringLiteral("list such as @example.com;@example.org");
    case Setting::Entries::FileTypes:
        return QStringLiteral("list such as .zip:1;.app:3, with levels from 0 to 3");
    case Setting::Entries::Plugins:
    case Setting::Entries::One:
        break;
    }
    QStringList words;
    for (const Choice &choice : SettingText::choicesOf(setting, product))
        words += choiceText(choice);
    const QString type = SettingText::typeName(setting);
    return words.isEmpty() ? type : QStringLiteral("%1: %2").arg(type, words.join(QStringLiteral(", ")));
}

void writeSetting(const Setting &setting, const Product &product, Console &console)
{
    const QString standard = SettingText::valueOf(setting, EditorXmlData(), product);
    console.writeTable(
        setting.name,
        {{QStringLiteral("meaning"), setting.meaning},
         {QStringLiteral("type"), formOf(setting, product)},
         {QStringLiteral("default"), standard.isEmpty() ? QStringLiteral("none") : standard},
         {QStringLiteral("products"),
          setting.isOnlyForEditor ? QStringLiteral("editor") : QStringLiteral("editor, reader")}});
}

int runNames(const VerbLine &line, Console &console)
{
    const Product &product = line.product();
    QJsonArray array;
    for (const Setting &setting : settings()) {
        if (!isOffered(setting, product))
            continue;
        if (line.isSet(OptionName::json))
            array.append(settingObject(setting, product));
        else
            writeSetting(setting, product, console);
    }
    if (line.isSet(OptionName::json))
        console.writeJson(
            {{QStringLiteral("product"), line.product().word}, {QStringLiteral("settings"), array}});
    return ExitCode::done;
}

bool isWanted(const Command &command, const VerbLine &line)
{
    if (line.isSet(OptionName::product) && !RibbonCommands::has(line.product(), command))
        return false;
    const QString all = (command.path + command.titles).join(QLatin1Char('\n'));
    const QStringList words = line.operands();
    return std::all_of(words.begin(), words.end(),
                       [&](const QString &word) { return all.contains(word, Qt::CaseInsensitive); });
}

QJsonObject commandObject(const Command &command)
{
    return {{QStringLiteral("name"), command.path.last()},
            {QStringLiteral("title"), command.titles.last()},
            {QStringLiteral("path"), QJsonArray::fromStringList(command.path)},
            {QStringLiteral("titles"), QJsonArray::fromStringList(command.titles)},
            {QStringLiteral("kind"), command.element.tagName()},
            {QStringLiteral("quickAccess"), command.canBeOnBar},
            {QStringLiteral("products"), productWords(command.inEditor, command.inReader)}};
}

QList<Console::Row> commandRows(const QVector<Command> &commands)
{
    QList<Console::Row> rows;
    for (const Command &command : commands)
        rows.append({command.path.last(), command.titles.join(QStringLiteral(" > "))});
    return rows;
}

QJsonArray commandsArray(const QVector<Command> &commands)
{
    QJsonArray array;
    for (const Command &command : commands)
        array.append(commandObject(command));
    return array;
}

int runCommands(const VerbLine &line, Console &console)
{
    QVector<Command> commands;
    for (const Command &command : RibbonCommands::all()) {
        if (isWanted(command, line))
            commands.append(command);
    }
    if (line.isSet(OptionName::json))
        console.writeJson({{QStringLiteral("commands"), commandsArray(commands)}});
    else if (!commands.isEmpty())
        console.writeTable(QStringLiteral("Ribbon commands"), commandRows(commands));
    return commands.isEmpty() ? ExitCode::refused : ExitCode::done;
}

} // namespace

Verb configNamesVerb()
{
    Verb verb{QLatin1String("config names"), QLatin1String("say what settings there are"), runNames};
    verb.description =
        QStringLiteral("Lists the settings of a product: name, meaning, type, values and default.");
    verb.options = {required(productOption(QStringLiteral("the product whose settings to list"))),
                    jsonOption()};
    return verb;
}

Verb configCommandsVerb()
{
    Verb verb{QLatin1String("config commands"), QLatin1String("say what can be hidden from the ribbon"),
              runCommands};
    verb.description =
        QStringLiteral("Lists what can be hidden from the ribbon and from the quick-access bar: "
                       "categories and what is in them. Exit code 1 when nothing fits.");
    verb.options = {productOption(QStringLiteral("only what this product has")), jsonOption()};
    verb.operands = {{Value::text("WORD"),
                      QStringLiteral("only what has all these words in its names or titles"), true, true}};
    return verb;
}
