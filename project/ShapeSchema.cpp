// SPDX-License-Identifier: Apache-2.0
#include "config/Product.h"
#include "config/SettingText.h"
#include "project/ProjectShape.h"

#include <QJsonArray>

namespace {

using ProjectShape::Field;
using Kind = Field::Kind;

const QString typeKey = QStringLiteral("type");
const QString propertiesKey = QStringLiteral("properties");
const QString textType = QStringLiteral("string");
const QString objectType = QStringLiteral("object");

QJsonObject schemaOf(const Field &field);

QJsonObject closedObject(const QJsonObject &properties)
{
    return {
        {typeKey, objectType}, {propertiesKey, properties}, {QStringLiteral("additionalProperties"), false}};
}

QJsonObject objectSchema(const QList<Field> &fields)
{
    QJsonObject properties;
    QJsonArray required;
    for (const Field &field : fields) {
        properties.insert(field.name, schemaOf(field));
        if (field.isRequired)
            required.append(QString(field.name));
    }
    QJsonObject schema = closedObject(properties);
    if (!required.isEmpty())
        schema.insert(QStringLiteral("required"), required);
    return schema;
}

QJsonObject listSchema()
{
    return {{typeKey, QStringLiteral("array")}, {QStringLiteral("items"), QJsonObject{{typeKey, textType}}}};
}

/// A word as it is, and as YAML's usual readers understand it when it has no quotes.
void appendWord(QJsonArray &values, const QString &word)
{
    bool isNumber = false;
    const int number = word.toInt(&isNumber);
    values.append(word);
    if (isNumber)
        values.append(number);
    if (word == QLatin1String("true") || word == QLatin1String("false"))
        values.append(word == QLatin1String("true"));
}

QJsonObject choiceSchema(const QStringList &words)
{
    QJsonArray values;
    for (const QString &word : words)
        appendWord(values, word);
    return {{QStringLiteral("enum"), values}};
}

QJsonObject settingSchema(const Setting &setting)
{
    if (setting.entries != Setting::Entries::One)
        return {{QStringLiteral("anyOf"), QJsonArray{QJsonObject{{typeKey, textType}}, listSchema()}}};
    QStringList words;
    for (const SettingText::Choice &choice : SettingText::choicesOf(setting, Product::editor()))
        words += QStringList{choice.word, choice.value};
    words.removeAll(QString());
    words.removeDuplicates();
    if (words.isEmpty())
        return {{typeKey, QJsonArray{textType, QStringLiteral("number"), QStringLiteral("null")}}};
    return choiceSchema(words);
}

QJsonObject valuesSchema()
{
    QJsonObject properties;
    for (const Setting &setting : settings()) {
        QJsonObject schema = settingSchema(setting);
        schema.insert(QStringLiteral("title"), QString(setting.title));
        schema.insert(QStringLiteral("description"), QString(setting.meaning));
        properties.insert(setting.name, schema);
    }
    return closedObject(properties);
}

QJsonObject nullableObject(const QList<Field> &fields, bool canBeLeftOut)
{
    QJsonArray forms{objectSchema(fields), QJsonObject{{typeKey, QStringLiteral("null")}}};
    if (canBeLeftOut)
        forms.append(QJsonObject{{QStringLiteral("const"), false}});
    return {{QStringLiteral("anyOf"), forms}};
}

QJsonObject shapeOf(const Field &field)
{
    switch (field.kind) {
    case Kind::Word:
        return choiceSchema(field.words);
    case Kind::Names:
        return listSchema();
    case Kind::Values:
        return valuesSchema();
    case Kind::Object:
        return objectSchema(field.fields);
    case Kind::OptionalObject:
        return nullableObject(field.fields, true);
    case Kind::Objects:
        return {{typeKey, objectType},
                {QStringLiteral("minProperties"), 1},
                {QStringLiteral("additionalProperties"), nullableObject(field.fields, false)}};
    case Kind::Text:
    case Kind::Path:
    case Kind::Folder:
    case Kind::FileName:
    case Kind::Secret:
        break;
    }
    return {{typeKey, textType}};
}

QJsonObject schemaOf(const Field &field)
{
    QJsonObject schema = shapeOf(field);
    schema.insert(QStringLiteral("description"), field.meaning);
    return schema;
}

} // namespace

QJsonObject ProjectShape::jsonSchema()
{
    QJsonObject schema = objectSchema(fields());
    schema.insert(QStringLiteral("$schema"), QStringLiteral("http://json-schema.org/draft-07/schema#"));
    schema.insert(QStringLiteral("title"), QStringLiteral("pct-project"));
    return schema;
}
