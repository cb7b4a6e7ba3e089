// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"
#include "cli/ExitCode.h"
#include "cli/Product.h"
#include "cli/SettingsFile.h"
#include "cli/Verb.h"
#include "config/RecordFields.h"
#include "core/PrintableText.h"

namespace {

QJsonValue jsonValue(bool value)
{
    return value;
}

QJsonValue jsonValue(int value)
{
    return value;
}

QJsonValue jsonValue(const QString &value)
{
    return value;
}

QJsonValue jsonValue(const QDomElement &value)
{
    return value.isNull() ? QJsonValue(QJsonValue::Null) : QJsonValue(elementText(value));
}

QJsonValue fieldValue(const RecordField &field, const EditorXmlData &settings)
{
    return std::visit([&](auto member) { return jsonValue(settings.*member); }, field.member);
}

QJsonObject settingsObject(const EditorXmlData &settings)
{
    QJsonObject object;
    for (const RecordField &field : recordFields())
        object.insert(field.name, fieldValue(field, settings));
    return object;
}

/// Texts stand in quotes, so that an empty one and a number in a text can be told.
QString readableValue(const QJsonValue &value)
{
    if (value.isNull())
        return QStringLiteral("none");
    if (value.isString())
        return QStringLiteral("\"%1\"").arg(printableText(value.toString()));
    return value.toVariant().toString();
}

QList<Console::Row> settingsRows(const EditorXmlData &settings)
{
    QList<Console::Row> rows;
    for (const RecordField &field : recordFields())
        rows.append({field.name, readableValue(fieldValue(field, settings))});
    return rows;
}

void writeSettings(const SettingsFile &file, bool asJson, Console &console)
{
    if (asJson) {
        console.writeJson({{QStringLiteral("kind"), file.kind},
                           {QStringLiteral("product"), file.product->word},
                           {QStringLiteral("settings"), settingsObject(file.settings)}});
        return;
    }
    const QString heading = QStringLiteral("%1 %2").arg(QString(file.product->title), file.kind);
    console.writeTable(heading, settingsRows(file.settings));
}

VerbSyntax showSyntax()
{
    VerbSyntax syntax;
    syntax.name = QStringLiteral("show");
    syntax.synopsis = QStringLiteral("[--json] FILE");
    syntax.description = QStringLiteral("Prints the settings that a file holds. Settings that the file does "
                                        "not mention have their default values.");
    syntax.options = {CommonOption::json()};
    syntax.operand = QStringLiteral("FILE");
    syntax.operandDescription = QStringLiteral("A configuration document or a customized package.");
    return syntax;
}

int runShow(const VerbLine &line, Console &console)
{
    SettingsFile file;
    if (const Verdict problem = readSettings(line.operandPath(), file)) {
        console.error(*problem);
        return ExitCode::refused;
    }
    writeSettings(file, line.isSet(QStringLiteral("json")), console);
    return ExitCode::done;
}

} // namespace

Verb showVerb()
{
    return {QLatin1String("show"), QLatin1String("print the settings in a document or a customized package"),
            showSyntax, runShow};
}
