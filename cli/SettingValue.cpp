// SPDX-License-Identifier: Apache-2.0
#include "cli/SettingValue.h"

#include "core/PrintableText.h"

#include <QVariant>

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

QString readableText(const QString &value)
{
    return QLatin1Char('"') + printableText(value) + QLatin1Char('"');
}

} // namespace

QJsonValue settingValue(const RecordField &field, const EditorXmlData &settings)
{
    return std::visit([&](auto member) { return jsonValue(settings.*member); }, field.member);
}

QString readableValue(const QJsonValue &value)
{
    if (value.isNull())
        return QStringLiteral("none");
    if (value.isString())
        return readableText(value.toString());
    return value.toVariant().toString();
}

/// A text can be as large as a document, and as a JSON value it would be copied twice.
QString readableValue(const RecordField &field, const EditorXmlData &settings)
{
    if (const auto *member = std::get_if<QString EditorXmlData::*>(&field.member))
        return readableText(settings.*(*member));
    return readableValue(settingValue(field, settings));
}
