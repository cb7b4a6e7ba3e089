// SPDX-License-Identifier: Apache-2.0
#include "cli/Json.h"

QJsonValue textOrNull(const QString &text)
{
    return text.isEmpty() ? QJsonValue(QJsonValue::Null) : QJsonValue(text);
}

QJsonObject problemObject(const Problem &problem)
{
    return {{QStringLiteral("file"), problem.file}, {QStringLiteral("text"), problem.text}};
}

QJsonObject warningObject(const BuildWarning &warning)
{
    return {{QStringLiteral("code"), warning.code}, {QStringLiteral("text"), warning.text}};
}
