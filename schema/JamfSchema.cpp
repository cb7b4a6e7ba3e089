// SPDX-License-Identifier: Apache-2.0
#include "config/Product.h"
#include "config/SettingItems.h"
#include "schema/ProfileForm.h"
#include "schema/Schema.h"

#include <QJsonArray>

namespace {

using SettingText::Choice;
using Section = Setting::Section;

/// Forms show what has a lower number first; gaps let people put something of their own between.
constexpr int orderGap = 5;

QJsonValue valueOf(const FormField &field, const QString &text)
{
    return field.isNumber ? QJsonValue(text.toInt()) : QJsonValue(text);
}

void addChoices(const FormField &field, QJsonObject &property)
{
    QJsonArray values;
    QJsonArray titles;
    for (const Choice &choice : field.choices) {
        values.append(valueOf(field, choice.value));
        titles.append(choice.word);
    }
    property.insert(QStringLiteral("enum"), values);
    property.insert(QStringLiteral("options"), QJsonObject{{QStringLiteral("enum_titles"), titles}});
}

QJsonObject fieldProperty(const FormField &field, const Product &product, int order)
{
    QJsonObject property{
        {QStringLiteral("title"), field.setting->title},
        {QStringLiteral("description"), fieldDescription(field, product)},
        {QStringLiteral("type"), field.isNumber ? QStringLiteral("integer") : QStringLiteral("string")},
        {QStringLiteral("property_order"), order}};
    if (!field.isNumber)
        property.insert(QStringLiteral("default"), field.standard);
    const QString pattern = listPattern(*field.setting, product);
    if (!field.choices.isEmpty())
        addChoices(field, property);
    else if (!pattern.isEmpty())
        property.insert(QStringLiteral("pattern"), pattern);
    return property;
}

QJsonObject keyProperty(const QString &key, int order)
{
    return {{QStringLiteral("title"), QStringLiteral("Setting")},
            {QStringLiteral("description"), QStringLiteral("Names the setting; leave it as it is.")},
            {QStringLiteral("type"), QStringLiteral("string")},
            {QStringLiteral("enum"), QJsonArray{key}},
            {QStringLiteral("default"), key},
            {QStringLiteral("property_order"), order}};
}

QJsonObject itemObject(const FormItem &item, const Product &product)
{
    QJsonObject properties;
    QJsonArray needed{QStringLiteral("Text")};
    int order = orderGap;
    for (const FormField &field : item.fields) {
        properties.insert(field.name, fieldProperty(field, product, order));
        order += orderGap;
        if (!field.isNumber)
            needed.append(field.name);
    }
    properties.insert(QStringLiteral("Text"), keyProperty(item.key, order));
    return {{QStringLiteral("title"), item.title},
            {QStringLiteral("type"), QStringLiteral("object")},
            {QStringLiteral("properties"), properties},
            {QStringLiteral("required"), needed}};
}

QJsonObject wrapped(const FormItem &item, const Product &product)
{
    return {{QStringLiteral("title"), item.title},
            {QStringLiteral("type"), QStringLiteral("object")},
            {QStringLiteral("properties"), QJsonObject{{item.element, itemObject(item, product)}}},
            {QStringLiteral("required"), QJsonArray{item.element}}};
}

QJsonObject defaultOf(const FormItem &item)
{
    QJsonObject fields{{QStringLiteral("Text"), item.key}};
    for (const FormField &field : item.fields) {
        if (!field.isNumber)
            fields.insert(field.name, field.standard);
    }
    return {{item.element, fields}};
}

/// The items of a profile have fixed roles, so each place of the list has a form of its own.
QJsonObject sectionProperty(Section section, const Product &product, int order)
{
    QJsonArray forms;
    QJsonArray defaults;
    const auto items = formItems(section, product);
    for (const FormItem &item : items) {
        forms.append(wrapped(item, product));
        defaults.append(defaultOf(item));
    }
    return {
        {QStringLiteral("title"), sectionName(section)}, {QStringLiteral("type"), QStringLiteral("array")},
        {QStringLiteral("property_order"), order},       {QStringLiteral("items"), forms},
        {QStringLiteral("additionalItems"), false},      {QStringLiteral("minItems"), forms.size()},
        {QStringLiteral("maxItems"), forms.size()},      {QStringLiteral("default"), defaults}};
}

} // namespace

QJsonObject Schema::jamf(const Product &product)
{
    QJsonObject properties;
    int order = orderGap;
    for (const Section section : {Section::Preferences, Section::Plugins}) {
        properties.insert(sectionName(section), sectionProperty(section, product, order));
        order += orderGap;
    }
    return {{QStringLiteral("title"),
             QStringLiteral("%1 (%2)").arg(QString(product.title), product.settingsType())},
            {QStringLiteral("description"), QStringLiteral("Settings of the %1 for the preference domain %2.")
                                                .arg(QString(product.title), product.settingsType())},
            {QStringLiteral("type"), QStringLiteral("object")},
            {QStringLiteral("options"), QJsonObject{{QStringLiteral("remove_empty_properties"), true}}},
            {QStringLiteral("properties"), properties}};
}
