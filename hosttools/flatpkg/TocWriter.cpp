// SPDX-License-Identifier: Apache-2.0
#include "hosttools/flatpkg/Toc.h"

#include <algorithm>
#include <QDateTime>
#include <QXmlStreamWriter>

namespace FlatPkg {

namespace {

class TocWriter
{
public:
    explicit TocWriter(QByteArray *xml)
        : m_xml(xml)
    {
        m_xml.setAutoFormatting(true);
    }

    void write(const Toc &toc);

private:
    void writeTocChecksum();
    void writeEntry(const TocEntry &entry);
    void writeName(const QByteArray &name);
    void writeType(const TocEntry &entry);
    void writeAttributes(const Attributes &attributes);
    void writeData(const MemberData &data);
    void writeChecksum(const char *element, const std::optional<Checksum> &checksum);

    void element(const char *name, const QString &text) { m_xml.writeTextElement(QLatin1String(name), text); }
    void element(const char *name, qint64 number) { element(name, QString::number(number)); }
    void start(const char *name) { m_xml.writeStartElement(QLatin1String(name)); }
    void attribute(const char *name, const QString &value)
    {
        m_xml.writeAttribute(QLatin1String(name), value);
    }

    QXmlStreamWriter m_xml;
};

QString isoTime(qint64 seconds)
{
    return QDateTime::fromSecsSinceEpoch(seconds).toUTC().toString(Qt::ISODate);
}

qint64 newestIn(const std::vector<TocEntry> &entries)
{
    qint64 newest = 0;
    for (const TocEntry &entry : entries)
        newest = std::max({newest, entry.attributes.modified.value_or(0), newestIn(entry.children)});
    return newest;
}

QString styleOf(DigestAlgorithm algorithm)
{
    switch (algorithm) {
    case DigestAlgorithm::Md5:
        return QStringLiteral("md5");
    case DigestAlgorithm::Sha1:
        return QStringLiteral("sha1");
    case DigestAlgorithm::Sha256:
        return QStringLiteral("sha256");
    case DigestAlgorithm::Sha512:
        return QStringLiteral("sha512");
    }
    Q_UNREACHABLE();
}

bool isXmlText(const QString &text, const QByteArray &bytes)
{
    const auto isControl = [](QChar c) { return c.unicode() < 0x20 || c.unicode() >= 0xFFFE; };
    return text.toUtf8() == bytes && std::none_of(text.begin(), text.end(), isControl);
}

void TocWriter::write(const Toc &toc)
{
    m_xml.writeStartDocument();
    start("xar");
    start("toc");
    writeTocChecksum();
    // Not the clock: the same folder gives the same package.
    element("creation-time", isoTime(newestIn(toc.entries)));
    for (const TocEntry &entry : toc.entries)
        writeEntry(entry);
    m_xml.writeEndDocument();
}

void TocWriter::writeTocChecksum()
{
    start("checksum");
    attribute("style", styleOf(DigestAlgorithm::Sha1));
    element("offset", 0);
    element("size", digestLength(DigestAlgorithm::Sha1));
    m_xml.writeEndElement();
}

void TocWriter::writeEntry(const TocEntry &entry)
{
    start("file");
    attribute("id", QString::fromLatin1(entry.id));
    writeName(entry.name);
    writeType(entry);
    writeAttributes(entry.attributes);
    if (entry.data)
        writeData(*entry.data);
    for (const TocEntry &child : entry.children)
        writeEntry(child);
    m_xml.writeEndElement();
}

void TocWriter::writeName(const QByteArray &name)
{
    const QString text = QString::fromUtf8(name);
    if (isXmlText(text, name))
        return element("name", text);
    start("name");
    attribute("enctype", QStringLiteral("base64"));
    m_xml.writeCharacters(QString::fromLatin1(name.toBase64()));
    m_xml.writeEndElement();
}

void TocWriter::writeType(const TocEntry &entry)
{
    const bool linked = entry.isOriginal || entry.type == EntryType::HardLink;
    start("type");
    if (linked)
        attribute("link", entry.isOriginal ? QStringLiteral("original") : QString::fromLatin1(entry.target));
    static const QString plainNames[] = {QStringLiteral("file"), QStringLiteral("directory"),
                                         QStringLiteral("symlink"), QStringLiteral("hardlink")};
    m_xml.writeCharacters(plainNames[static_cast<int>(linked ? EntryType::HardLink : entry.type)]);
    m_xml.writeEndElement();
    if (entry.type != EntryType::Link)
        return;
    start("link");
    attribute("type", QStringLiteral("broken")); // what it leads to is not for us to look at
    m_xml.writeCharacters(QString::fromUtf8(entry.target));
    m_xml.writeEndElement();
}

void TocWriter::writeAttributes(const Attributes &attributes)
{
    element("mode", QStringLiteral("0%1").arg(attributes.mode, 3, 8, QLatin1Char('0')));
    element("uid", attributes.uid);
    element("user", QString::fromUtf8(attributes.user));
    element("gid", attributes.gid);
    element("group", QString::fromUtf8(attributes.group));
    if (attributes.modified)
        element("mtime", isoTime(*attributes.modified));
}

void TocWriter::writeData(const MemberData &data)
{
    start("data");
    writeChecksum("archived-checksum", data.archived);
    writeChecksum("extracted-checksum", data.extracted);
    start("encoding");
    attribute("style", QStringLiteral("application/octet-stream"));
    m_xml.writeEndElement();
    element("size", data.size);
    element("offset", data.offset);
    element("length", data.length);
    m_xml.writeEndElement();
}

void TocWriter::writeChecksum(const char *name, const std::optional<Checksum> &checksum)
{
    if (!checksum)
        return;
    start(name);
    attribute("style", styleOf(checksum->algorithm));
    m_xml.writeCharacters(QString::fromLatin1(checksum->digest.toHex()));
    m_xml.writeEndElement();
}

} // namespace

QByteArray writeToc(const Toc &toc)
{
    QByteArray xml;
    TocWriter(&xml).write(toc);
    return xml;
}

} // namespace FlatPkg
