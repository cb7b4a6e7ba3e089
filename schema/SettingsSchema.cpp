// SPDX-License-Identifier: Apache-2.0
#include "config/Product.h"
#include "config/ProductSettings.h"
#include "config/SettingItems.h"
#include "schema/ProfileForm.h"
#include "schema/Schema.h"

#include <QJsonArray>

namespace {

using SettingText::Choice;
using Data = EditorXmlData;

bool isElement(const Setting &setting)
{
    return std::holds_alternative<QDomElement Data::*>(setting.member);
}

QString typeOf(const Setting &setting)
{
    if (std::holds_alternative<bool Data::*>(setting.member))
        return QStringLiteral("boolean");
    return std::holds_alternative<int Data::*>(setting.member) ? QStringLiteral("integer")
                                                               : QStringLiteral("string");
}

QJsonValue valueOf(const Data &data, const Setting &setting)
{
    if (const auto *member = std::get_if<bool Data::*>(&setting.member))
        return data.**member;
    if (const auto *member = std::get_if<int Data::*>(&setting.member))
        return data.**member;
    return data.*std::get<QString Data::*>(setting.member);
}

QJsonValue valueOf(const Choice &choice, const Setting &setting)
{
    const bool isNumber = std::holds_alternative<int Data::*>(setting.member);
    return isNumber ? QJsonValue(choice.value.toInt()) : QJsonValue(choice.value);
}

void addOnce(QJsonArray &array, const QJsonValue &value)
{
    if (!array.contains(value))
        array.append(value);
}

/// What a setting may be that takes some values only: also its default, and what documents say in words.
QJsonArray valuesOf(const Setting &setting, const Product &product)
{
    QJsonArray values;
    const bool isText = typeOf(setting) == QLatin1String("string");
    for (const Choice &choice : SettingText::choicesOf(setting, product)) {
        addOnce(values, valueOf(choice, setting));
        if (isText && choice.word.size() < 10)
            addOnce(values, choice.word);
    }
    addOnce(values, valueOf(Data(), setting));
    if (isText && setting.document.text)
        addOnce(values, SettingText::writtenText(setting, SettingText::Form::Document, Data()));
    return values;
}

/// What the product lacks may be there as far as it changes nothing.
QJsonArray harmlessValues(const Setting &setting, const Product &product)
{
    QJsonArray values{valueOf(Data(), setting)};
    addOnce(values, valueOf(settingsForProduct(Data(), product), setting));
    return values;
}

QString descriptionOf(const Setting &setting)
{
    QString text = setting.meaning;
    text.replace(0, 1, text.at(0).toUpper());
    QStringList words;
    for (const Setting::Choice &choice : setting.choices)
        words += QStringLiteral("%1 %2").arg(choice.value, choice.word);
    return words.isEmpty() ? text + QLatin1Char('.')
                           : QStringLiteral("%1: %2.").arg(text, words.join(QStringLiteral(", ")));
}

QJsonObject elementProperty(const Setting &setting)
{
    return {{QStringLiteral("type"), QJsonArray{QStringLiteral("string"), QStringLiteral("null")}},
            {QStringLiteral("pattern"),
             QStringLiteral("^\\s*<%1[\\s/>]").arg(elementName(setting.place.section))},
            {QStringLiteral("default"), QJsonValue::Null}};
}

QJsonObject valueProperty(const Setting &setting, const Product &product)
{
    QJsonObject property{{QStringLiteral("type"), typeOf(setting)},
                         {QStringLiteral("default"), valueOf(Data(), setting)}};
    const bool isLacking = setting.isOnlyForEditor && !product.isEditor();
    const QString pattern = listPattern(setting, product);
    if (isLacking)
        property.insert(QStringLiteral("enum"), harmlessValues(setting, product));
    else if (!setting.choices.empty())
        property.insert(QStringLiteral("enum"), valuesOf(setting, product));
    else if (!pattern.isEmpty())
        property.insert(QStringLiteral("pattern"), pattern);
    return property;
}

QJsonObject propertyOf(const Setting &setting, const Product &product)
{
    QJsonObject property = isElement(setting) ? elementProperty(setting) : valueProperty(setting, product);
    property.insert(QStringLiteral("title"), setting.title);
    property.insert(QStringLiteral("description"), descriptionOf(setting));
    return property;
}

QJsonObject closedObject(const QJsonObject &properties)
{
    return {{QStringLiteral("type"), QStringLiteral("object")},
            {QStringLiteral("properties"), properties},
            {QStringLiteral("additionalProperties"), false}};
}

QJsonObject ofType(const char *type)
{
    return {{QStringLiteral("type"), QString::fromLatin1(type)}};
}

QJsonObject identity()
{
    QJsonObject properties;
    for (const char *name : {"PayloadDisplayName", "PayloadIdentifier", "PayloadUUID", "PayloadOrganization",
                             "PayloadDescription"})
        properties.insert(QString::fromLatin1(name), ofType("string"));
    return closedObject(properties);
}

/// What stands beside the settings.
QJsonObject surroundings(const Product &product)
{
    const QJsonArray kinds{QStringLiteral("document"), QStringLiteral("profile"), QStringLiteral("package")};
    return {{QStringLiteral("product"), QJsonObject{{QStringLiteral("const"), product.word}}},
            {QStringLiteral("kind"), QJsonObject{{QStringLiteral("enum"), kinds}}},
            {QStringLiteral("identity"), identity()},
            {QStringLiteral("warnings"), QJsonObject()},
            {QStringLiteral("signer"), QJsonObject()},
            {QStringLiteral("signers"), QJsonObject()}};
}

QJsonObject with(QJsonObject object, const QJsonObject &more)
{
    for (auto member = more.begin(); member != more.end(); ++member)
        object.insert(member.key(), member.value());
    return object;
}

} // namespace

QJsonObject Schema::ofSettings(const Product &product)
{
    const QString nested = QStringLiteral("settings");
    QJsonObject properties;
    for (const Setting &setting : settings())
        properties.insert(setting.name, propertyOf(setting, product));
    const QJsonObject around = surroundings(product);
    const QJsonObject reference{{QStringLiteral("$ref"), QStringLiteral("#/definitions/settings")}};
    return {{QStringLiteral("$schema"), QStringLiteral("http://json-schema.org/draft-07/schema#")},
            {QStringLiteral("title"), QStringLiteral("Settings of the %1").arg(product.title)},
            {QStringLiteral("description"),
             QStringLiteral(
                 "What pct show --json prints, or a part of it: the settings in a member of that name, "
                 "or in the outermost object.")},
            {QStringLiteral("definitions"), QJsonObject{{nested, closedObject(properties)}}},
            {QStringLiteral("type"), QStringLiteral("object")},
            {QStringLiteral("if"), QJsonObject{{QStringLiteral("required"), QJsonArray{nested}}}},
            {QStringLiteral("then"), closedObject(with(around, {{nested, reference}}))},
            {QStringLiteral("else"), closedObject(with(around, properties))}};
}
