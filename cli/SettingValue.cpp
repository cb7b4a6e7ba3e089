// SPDX-License-Identifier: Apache-2.0
#include "cli/SettingValue.h"

#include "config/KeptElement.h"
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

QJsonValue settingValue(const Setting &setting, const EditorXmlData &data)
{
    return std::visit([&](auto member) { return jsonValue(data.*member); }, setting.member);
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
QString readableValue(const Setting &setting, const EditorXmlData &data)
{
    if (const auto *member = std::get_if<QString EditorXmlData::*>(&setting.member))
        return readableText(data.**member);
    return readableValue(settingValue(setting, data));
}
