// SPDX-License-Identifier: Apache-2.0
#include "config/Product.h"
#include "schema/ProfileForm.h"
#include "schema/Schema.h"

#include <algorithm>

namespace {

using SettingText::Choice;

/// A cell stays one whatever is in it.
QString cell(QString text)
{
    return text.replace(QLatin1Char('|'), QStringLiteral("\\|"));
}

QString code(const QString &text)
{
    return QStringLiteral("`%1`").arg(text);
}

QString listForm(const Setting &setting)
{
    switch (setting.entries) {
    case Setting::Entries::Plugins:
        return QStringLiteral("plug-ins, see below");
    case Setting::Entries::Domains:
        return QStringLiteral("domains such as `@example.com;@example.org`");
    case Setting::Entries::FileTypes:
        return QStringLiteral("types such as `version:1|.zip:1|.app:3`, with levels from 0 to 3");
    case Setting::Entries::One:
        break;
    }
    return std::holds_alternative<QDomElement EditorXmlData::*>(setting.member)
               ? QStringLiteral("XML; `pct config commands` lists what can be hidden")
               : SettingText::typeName(setting);
}

QString valuesOf(const Setting &setting, const Product &product)
{
    if (setting.entries != Setting::Entries::One)
        return listForm(setting);
    QStringList values;
    for (const Choice &choice : SettingText::choicesOf(setting, product))
        values += choice.value == choice.word
                      ? code(choice.value)
                      : QStringLiteral("%1 (%2)").arg(code(choice.value), choice.word);
    return values.isEmpty() ? listForm(setting) : values.join(QStringLiteral(", "));
}

QString placeOf(const Setting &setting)
{
    if (setting.place.key.isEmpty())
        return setting.place.attribute;
    return QStringLiteral("%1 of %2").arg(code(setting.place.attribute), code(setting.place.key));
}

QString row(const QStringList &texts)
{
    QString line = QStringLiteral("|");
    for (const QString &text : texts)
        line += QStringLiteral(" %1 |").arg(cell(text));
    return line + QLatin1Char('\n');
}

QString settingRow(const Setting &setting, const Product &product)
{
    const QString standard = SettingText::valueOf(setting, EditorXmlData(), product);
    return row({code(setting.name), setting.title, setting.meaning, valuesOf(setting, product),
                standard.isEmpty() ? QStringLiteral("none") : standard, placeOf(setting)});
}

const Setting &pluginSetting()
{
    const auto isList = [](const Setting &setting) { return setting.entries == Setting::Entries::Plugins; };
    return *std::find_if(settings().begin(), settings().end(), isList);
}

} // namespace

QString Schema::table(const Product &product)
{
    QString text = QStringLiteral("# Settings of the %1\n\n").arg(product.title);
    text += row({QStringLiteral("Name"), QStringLiteral("In the window"), QStringLiteral("What it does"),
                 QStringLiteral("Values"), QStringLiteral("Default"),
                 QStringLiteral("In documents and profiles")});
    text += QStringLiteral("| --- | --- | --- | --- | --- | --- |\n");
    for (const Setting &setting : settings()) {
        if (product.isEditor() || !setting.isOnlyForEditor)
            text += settingRow(setting, product);
    }
    text += QStringLiteral("\n## Plug-ins\n\n| Library | Title |\n| --- | --- |\n");
    for (const Choice &plugin : SettingText::choicesOf(pluginSetting(), product))
        text += row({code(plugin.value), plugin.word});
    return text;
}
