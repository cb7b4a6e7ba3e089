// SPDX-License-Identifier: Apache-2.0
#include "cli/Json.h"

#include "config/EditorXmlData.h"

QJsonValue textOrNull(const QString &text)
{
    return text.isEmpty() ? QJsonValue(QJsonValue::Null) : QJsonValue(text);
}

QJsonValue problemOrNull(const Result<> &result)
{
    if (result)
        return QJsonValue::Null;
    const Problem &problem = result.problem();
    return QJsonObject{{QStringLiteral("file"), problem.file}, {QStringLiteral("text"), problem.text}};
}

QJsonObject warningObject(const BuildWarning &warning)
{
    return {{QStringLiteral("code"), warning.code}, {QStringLiteral("text"), warning.text}};
}

QJsonArray warningsArray(const QList<FileWarning> &warnings)
{
    QJsonArray array;
    for (const FileWarning &warning : warnings) {
        QJsonObject object = warningObject(warning.warning);
        object.insert(QStringLiteral("file"), warning.file);
        array.append(object);
    }
    return array;
}

void insertWarnings(QJsonObject &object, const QList<FileWarning> &warnings)
{
    if (!warnings.isEmpty())
        object.insert(QStringLiteral("warnings"), warningsArray(warnings));
}

QJsonObject identityObject(const ProfilePayloadInfo &identity)
{
    return {
        {QStringLiteral("PayloadDisplayName"), identity.PayloadDisplayName},
        {QStringLiteral("PayloadIdentifier"), identity.PayloadIdentifier},
        {QStringLiteral("PayloadUUID"), identity.PayloadUUID},
        {QStringLiteral("PayloadOrganization"), identity.PayloadOrganization},
        {QStringLiteral("PayloadDescription"), identity.PayloadDescription},
    };
}
