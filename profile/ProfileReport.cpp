// SPDX-License-Identifier: Apache-2.0
#include "profile/ProfileReport.h"

#include "config/XmlTree.h"
#include "profile/PropertyListInput.h"

#include <QDomDocument>
#include <QVariant>

namespace {

QVariant valueOf(const QDomElement &element);

QVariantMap dictionaryOf(const QDomElement &element)
{
    QVariantMap values;
    for (QDomElement key = element.firstChildElement(); !key.isNull();) {
        const QDomElement value = key.nextSiblingElement();
        values.insert(key.text(), valueOf(value));
        key = value.nextSiblingElement();
    }
    return values;
}

QVariantList arrayOf(const QDomElement &element)
{
    QVariantList values;
    for (QDomElement item = element.firstChildElement(); !item.isNull(); item = item.nextSiblingElement())
        values.append(valueOf(item));
    return values;
}

/// Dictionaries, arrays, and all else as text.
QVariant valueOf(const QDomElement &element)
{
    if (element.tagName() == QLatin1String("dict"))
        return dictionaryOf(element);
    return element.tagName() == QLatin1String("array") ? QVariant(arrayOf(element)) : element.text();
}

QVariantList itemsOf(const QVariantMap &entry)
{
    return entry.value(QStringLiteral("_items")).toList();
}

QString textOf(const QVariantMap &entry, const char *key)
{
    return entry.value(QLatin1String("spconfigprofile_") + QLatin1String(key)).toString();
}

QString nameOf(const QVariantMap &entry)
{
    return entry.value(QStringLiteral("_name")).toString();
}

ProfilePayloadInfo identityOf(const QVariantMap &profile)
{
    return {nameOf(profile), textOf(profile, "profile_identifier"), textOf(profile, "profile_uuid"),
            textOf(profile, "organization"), textOf(profile, "description")};
}

ProfileReport::Payload payloadOf(const QVariantMap &entry, const ProfilePayloadInfo &profile)
{
    return {nameOf(entry), textOf(entry, "payload_identifier"), textOf(entry, "payload_uuid"),
            textOf(entry, "payload_data"), profile};
}

/// Sections hold profiles and profiles payloads. Which sections there are differs between systems.
void collect(const QVariantList &entries, QList<ProfileReport::Payload> &payloads)
{
    for (const QVariant &value : entries) {
        const QVariantMap entry = value.toMap();
        const ProfilePayloadInfo identity = identityOf(entry);
        if (identity.PayloadIdentifier.isEmpty()) {
            collect(itemsOf(entry), payloads);
            continue;
        }
        for (const QVariant &payload : itemsOf(entry))
            payloads.append(payloadOf(payload.toMap(), identity));
    }
}

} // namespace

QList<ProfileReport::Payload> ProfileReport::payloads(const QByteArray &report, QString &problem)
{
    QList<Payload> result;
    QDomDocument document;
    const QByteArray vetted = PropertyListInput::vetted(report, &problem);
    if (!problem.isEmpty() || !XmlTree::read(vetted, document, &problem))
        return result;
    const QDomElement list = document.documentElement().firstChildElement();
    if (list.tagName() == QLatin1String("array"))
        collect(arrayOf(list), result);
    else
        problem = QStringLiteral("it is no list of profiles");
    return result;
}
