// SPDX-License-Identifier: Apache-2.0
#include "package/MunkiItem.h"

#include "config/XmlTree.h"
#include "core/SafeFile.h"

#include <QDir>
#include <QDomDocument>
#include <QXmlStreamWriter>

namespace {

Result<QDomElement> readRoot(const QString &path)
{
    const Result<QByteArray> bytes = SafeFile::readContents(path);
    if (!bytes)
        return bytes.problem();
    const Result<QDomDocument> document = XmlTree::read(*bytes);
    if (!document)
        return Problem{path, document.problem().text};
    return document->documentElement();
}

MunkiItem::Receipt receiptOf(const QDomElement &info)
{
    const QDomElement payload = info.firstChildElement(QStringLiteral("payload"));
    return {info.attribute(QStringLiteral("identifier")), info.attribute(QStringLiteral("version")),
            payload.attribute(QStringLiteral("installKBytes")).toLongLong()};
}

/// The first that the distribution allows; others are newer.
QString oldestSystem(const QDomElement &distribution)
{
    return XmlTree::firstNamed(distribution, {QStringLiteral("os-version")})
        .first()
        .attribute(QStringLiteral("min"));
}

/// Writes a dictionary member by member; empty texts are left out.
class Writer
{
public:
    Writer()
        : m_xml(&m_bytes)
    {
        m_xml.setAutoFormatting(true);
        m_xml.writeStartDocument();
        m_xml.writeDTD(QStringLiteral("<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                                      "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">"));
        m_xml.writeStartElement(QStringLiteral("plist"));
        m_xml.writeAttribute(QStringLiteral("version"), QStringLiteral("1.0"));
    }

    void begin(const char *element) { m_xml.writeStartElement(QLatin1String(element)); }
    void end() { m_xml.writeEndElement(); }
    void key(const char *name) { m_xml.writeTextElement(QStringLiteral("key"), QLatin1String(name)); }
    void text(const QString &value) { m_xml.writeTextElement(QStringLiteral("string"), value); }

    void member(const char *name, const QString &value)
    {
        if (value.isEmpty())
            return;
        key(name);
        text(value);
    }

    void member(const char *name, qint64 value)
    {
        key(name);
        m_xml.writeTextElement(QStringLiteral("integer"), QString::number(value));
    }

    void truth(const char *name)
    {
        key(name);
        m_xml.writeEmptyElement(QStringLiteral("true"));
    }

    QByteArray finished()
    {
        m_xml.writeEndDocument();
        return m_bytes;
    }

private:
    QByteArray m_bytes;
    QXmlStreamWriter m_xml;
};

void writeReceipts(const QList<MunkiItem::Receipt> &receipts, Writer &list)
{
    list.key("receipts");
    list.begin("array");
    for (const MunkiItem::Receipt &receipt : receipts) {
        list.begin("dict");
        list.member("installed_size", receipt.installedKibibytes);
        list.member("packageid", receipt.identifier);
        list.member("version", receipt.version);
        list.end();
    }
    list.end();
}

qint64 kibibytes(qint64 bytes)
{
    return (bytes + 1023) / 1024;
}

} // namespace

Result<> MunkiItem::readExpanded(const QString &folder)
{
    const Result<QDomElement> distribution = readRoot(folder + QStringLiteral("/Distribution"));
    if (!distribution)
        return distribution.problem();
    minimumSystem = oldestSystem(*distribution);
    for (const QString &component :
         QDir(folder).entryList({QStringLiteral("*.pkg")}, QDir::Dirs, QDir::Name)) {
        const Result<QDomElement> info =
            readRoot(folder + QLatin1Char('/') + component + QStringLiteral("/PackageInfo"));
        if (!info)
            return info.problem();
        receipts.append(receiptOf(*info));
    }
    return {};
}

QByteArray MunkiItem::propertyList() const
{
    Writer list;
    list.begin("dict");
    list.key("catalogs");
    list.begin("array");
    for (const QString &catalog : catalogs.isEmpty() ? QStringList{QStringLiteral("testing")} : catalogs)
        list.text(catalog);
    list.end();
    list.member("display_name", displayName);
    list.member("installer_item_hash", QString::fromLatin1(sha256));
    list.member("installer_item_location", location);
    list.member("installer_item_size", kibibytes(bytes));
    list.member("minimum_os_version", minimumSystem);
    list.member("name", name);
    writeReceipts(receipts, list);
    list.truth("unattended_install");
    list.member("version", version);
    list.end();
    return list.finished();
}
