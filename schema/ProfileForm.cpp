// SPDX-License-Identifier: Apache-2.0
#include "schema/ProfileForm.h"

#include "config/Product.h"
#include "config/ProductSettings.h"
#include "config/SettingItems.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

using Entries = Setting::Entries;
using SettingText::Choice;
using SettingText::Form;

bool isOffered(const Setting &setting, const Product &product)
{
    return product.isEditor() || !setting.isOnlyForEditor;
}

/// A number is one only where it is set.
bool isNumber(const Setting &setting)
{
    const auto choices = SettingText::choicesOf(setting, Product::editor());
    return std::any_of(choices.begin(), choices.end(), [&](const Choice &choice) {
        EditorXmlData data;
        const bool isTaken(SettingText::take(setting, choice.value, Product::editor(), data));
        return isTaken && std::holds_alternative<int>(setting.profile.value(data));
    });
}

QList<Choice> offeredChoices(const Setting &setting, const QString &standard)
{
    QList<Choice> choices = SettingText::writtenChoicesOf(setting, Form::Profile);
    for (Choice &choice : choices)
        choice.word = wordFor(setting, choice);
    const bool isKnown = std::any_of(choices.begin(), choices.end(),
                                     [&](const Choice &choice) { return choice.value == standard; });
    if (!choices.isEmpty() && !isKnown)
        choices.prepend({standard, QStringLiteral("Not chosen")});
    return choices;
}

FormField fieldOf(const Setting &setting, const Product &product)
{
    const EditorXmlData standards = settingsForProduct(EditorXmlData(), product);
    FormField field{setting.place.attribute,
                    &setting,
                    {},
                    isNumber(setting),
                    SettingText::writtenText(setting, Form::Profile, standards)};
    if (isOffered(setting, product))
        field.choices = offeredChoices(setting, field.standard);
    else
        field.choices = {{field.standard, QStringLiteral("Only the Editor has this")}};
    if (!field.isNumber)
        return field;
    // What is not set is left out.
    field.choices.erase(std::remove_if(field.choices.begin(), field.choices.end(),
                                       [](const Choice &choice) { return choice.value.isEmpty(); }),
                        field.choices.end());
    return field;
}

QString alternatives(const QList<Choice> &choices)
{
    QStringList values;
    for (const Choice &choice : choices)
        values += QRegularExpression::escape(choice.value);
    return QStringLiteral("(%1)").arg(values.join(QLatin1Char('|')));
}

QString entriesDescription(const Setting &setting, const Product &product)
{
    QStringList plugins;
    switch (setting.entries) {
    case Entries::Plugins:
        for (const Choice &choice : SettingText::choicesOf(setting, product))
            plugins += QStringLiteral("%1 (%2)").arg(choice.value, choice.word);
        return QStringLiteral("Libraries, each followed by a semicolon: %1.")
            .arg(plugins.join(QStringLiteral(", ")));
    case Entries::Domains:
        return QStringLiteral("Domains with semicolons between them: @example.com;@example.org.");
    case Entries::FileTypes:
        return QStringLiteral(
            "version:1 and for each type a |, the extension with its dot, a colon and a level "
            "from 0 to 3: version:1|.zip:1|.app:3.");
    case Entries::One:
        break;
    }
    return {};
}

} // namespace

std::vector<FormItem> formItems(Setting::Section section, const Product &product)
{
    std::vector<FormItem> items;
    for (const SettingItem &known : profileItems(section)) {
        FormItem item{elementName(section), known.key, known.settings.front()->title, {}};
        for (const Setting *setting : known.settings)
            item.fields.push_back(fieldOf(*setting, product));
        items.push_back(item);
    }
    return items;
}

QString fieldDescription(const FormField &field, const Product &product)
{
    QString text = field.setting->meaning;
    text.replace(0, 1, text.at(0).toUpper());
    const QString entries = entriesDescription(*field.setting, product);
    return entries.isEmpty() ? text + QLatin1Char('.') : QStringLiteral("%1. %2").arg(text, entries);
}

QString listPattern(const Setting &setting, const Product &product)
{
    switch (setting.entries) {
    case Entries::Plugins: {
        const QString one = alternatives(SettingText::choicesOf(setting, product));
        return QStringLiteral("^(%1(;%1)*;?)?$").arg(one);
    }
    case Entries::Domains:
        return QStringLiteral("^(@[A-Za-z0-9.-]+\\.[A-Za-z]{2,}(;@[A-Za-z0-9.-]+\\.[A-Za-z]{2,})*)?$");
    case Entries::FileTypes:
        return QStringLiteral("^(version:1(\\|\\.[^\\s.:|][^\\s:|]*:[0-3])*\\|?)?$");
    case Entries::One:
        break;
    }
    return {};
}

QString wordFor(const Setting &setting, const SettingText::Choice &choice)
{
    if (!std::holds_alternative<bool EditorXmlData::*>(setting.member))
        return choice.word;
    return choice.word == QLatin1String("true") ? QStringLiteral("Yes") : QStringLiteral("No");
}
