// SPDX-License-Identifier: Apache-2.0
#include "profile/ProfileReport.h"

#include "profile/propertylist/PropertyListInput.h"

#include <QVariant>
#include <QVector>

namespace {

/// Dictionaries, arrays and texts; all else is an invalid value.
class VariantBuilder : public PropertyList::Sink
{
public:
    const QVariant &result() const { return m_result; }

    void beginDictionary() override { m_levels.append({true, {}, {}, {}}); }
    void beginArray() override { m_levels.append({false, {}, {}, {}}); }

    void end() override
    {
        const Level level = m_levels.takeLast();
        add(level.isDictionary ? QVariant(level.map) : QVariant(level.list));
    }

    void key(const QString &text) override { m_levels.last().key = text; }

    void scalar(const PropertyList::Scalar &value) override
    {
        const auto *text = std::get_if<QString>(&value);
        add(text ? QVariant(*text) : QVariant());
    }

private:
    struct Level
    {
        bool isDictionary = false;
        QVariantMap map;
        QVariantList list;
        QString key;
    };

    void add(const QVariant &value)
    {
        if (m_levels.isEmpty())
            m_result = value;
        else if (m_levels.last().isDictionary)
            m_levels.last().map.insert(m_levels.last().key, value);
        else
            m_levels.last().list.append(value);
    }

    QVector<Level> m_levels;
    QVariant m_result;
};

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

Result<QList<ProfileReport::Payload>> ProfileReport::payloads(const QByteArray &report)
{
    VariantBuilder builder;
    if (const Result<> read = PropertyListInput::read(report, builder); !read)
        return read.problem();
    if (builder.result().userType() != QMetaType::QVariantList)
        return Problem{{}, QStringLiteral("it is no list of profiles")};
    QList<Payload> result;
    collect(builder.result().toList(), result);
    return result;
}
