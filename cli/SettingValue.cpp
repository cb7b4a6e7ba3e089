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
        return QStringLiteral("\"%1\"").arg(printableText(value.toString()));
    return value.toVariant().toString();
}
