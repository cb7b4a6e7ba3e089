// SPDX-License-Identifier: Apache-2.0
#include "hosttools/base/Error.h"
#include "hosttools/base/XmlReader.h"
#include "hosttools/flatpkg/EntryPath.h"
#include "hosttools/flatpkg/Limits.h"
#include "hosttools/flatpkg/Toc.h"

#include <algorithm>
#include <limits>
#include <QDateTime>
#include <QHash>
#include <QSet>
#include <QTimeZone>
#include <QVector>

namespace FlatPkg {

namespace {

/// Vendors' tools write some twenty elements for each member; more than this is no package's.
XmlLimits tocLimits()
{
    XmlLimits limits;
    limits.elements = 2500000;
    return limits;
}

class TocReader
{
public:
    TocReader(const QByteArray &xml, qint64 heapLength)
        : m_xml(xml, "its table of contents ", tocLimits())
        , m_heapLength(heapLength)
    {
    }

    Toc read();

private:
    void findRoot();
    void readTocElement(Toc &toc);
    std::optional<TocChecksum> readTocChecksum();

    void readEntry(std::vector<TocEntry> &siblings, QSet<QByteArray> &names, int depth);
    void readProperty(TocEntry &entry);
    void readType(TocEntry &entry);
    QByteArray readName();
    MemberData readData();
    void readDataProperty(MemberData &data);
    std::optional<Checksum> readChecksum();

    void finishEntry(TocEntry &entry, int depth);
    void requireSoundData(const MemberData &data) const;
    void requireHardLinkTargets() const;

    bool at(const char *element) const { return m_xml.at(element); }
    QByteArray text() { return m_xml.readText(); }
    QByteArray attribute(const char *name) const { return m_xml.attribute(name); }
    qint64 number(qint64 largest = std::numeric_limits<qint64>::max(), int base = 10);
    QByteArray ownerName();
    std::optional<qint64> time();

    XmlReader m_xml;
    qint64 m_heapLength;
    int m_members = 0;
    QSet<QByteArray> m_fileIds;
    QVector<QByteArray> m_hardLinkTargets;
};

[[noreturn]] void refuse(const QByteArray &what)
{
    throw Error("its table of contents " + what);
}

bool consistsOf(const QByteArray &text, char first, char last)
{
    const auto inRange = [=](char digit) { return digit >= first && digit <= last; };
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), inRange);
}

Toc TocReader::read()
{
    findRoot();
    Toc toc;
    while (m_xml.readNextStartElement()) {
        if (at("toc"))
            readTocElement(toc);
        else
            m_xml.skipCurrentElement();
    }
    m_xml.readToEnd();
    requireHardLinkTargets();
    return toc;
}

void TocReader::findRoot()
{
    m_xml.readNextStartElement();
    if (m_xml.encoding().compare("UTF-8", Qt::CaseInsensitive) != 0 && !m_xml.encoding().isEmpty())
        refuse("is not UTF-8");
    if (!at("xar"))
        refuse("is not one of a xar archive");
}

void TocReader::readTocElement(Toc &toc)
{
    QSet<QByteArray> names;
    while (m_xml.readNextStartElement()) {
        if (at("file"))
            readEntry(toc.entries, names, 1);
        else if (at("checksum") && !toc.checksum)
            toc.checksum = readTocChecksum();
        else
            m_xml.skipCurrentElement(); // signatures and when the archive was made
    }
}

std::optional<TocChecksum> TocReader::readTocChecksum()
{
    const std::optional<DigestAlgorithm> algorithm = digestAlgorithmNamed(attribute("style"));
    if (!algorithm) {
        m_xml.skipCurrentElement();
        return std::nullopt;
    }
    TocChecksum checksum;
    checksum.algorithm = *algorithm;
    while (m_xml.readNextStartElement()) {
        if (at("offset"))
            checksum.offset = number(m_heapLength);
        else if (at("size"))
            checksum.size = number(m_heapLength);
        else
            m_xml.skipCurrentElement();
    }
    const bool inHeap = checksum.size <= m_heapLength - checksum.offset;
    if (!inHeap || checksum.size != digestLength(checksum.algorithm))
        refuse("has an impossible checksum");
    return checksum;
}

void TocReader::readEntry(std::vector<TocEntry> &siblings, QSet<QByteArray> &names, int depth)
{
    if (depth > deepestNesting)
        refuse("is nested too deeply");
    if (++m_members > mostMembers)
        refuse("has too many members");
    TocEntry entry;
    entry.id = attribute("id");
    QSet<QByteArray> seen;
    QSet<QByteArray> childNames;
    while (m_xml.readNextStartElement()) {
        if (at("file")) {
            readEntry(entry.children, childNames, depth + 1);
        } else if (seen.contains(m_xml.name())) {
            m_xml.skipCurrentElement(); // vendors write names twice; the first one counts
        } else {
            seen.insert(m_xml.name());
            readProperty(entry);
        }
    }
    finishEntry(entry, depth);
    if (names.contains(entry.name))
        refuse("has the name \"" + entry.name + "\" twice in one folder");
    names.insert(entry.name);
    siblings.push_back(std::move(entry));
}

void TocReader::readProperty(TocEntry &entry)
{
    Attributes &attributes = entry.attributes;
    constexpr qint64 largestId = std::numeric_limits<quint32>::max();
    if (at("name"))
        entry.name = readName();
    else if (at("type"))
        readType(entry);
    else if (at("link"))
        entry.target = text();
    else if (at("data"))
        entry.data = readData();
    else if (at("mode"))
        attributes.mode = static_cast<mode_t>(number(largestId, 8)) & 07777U;
    else if (at("uid"))
        attributes.uid = static_cast<quint32>(number(largestId));
    else if (at("gid"))
        attributes.gid = static_cast<quint32>(number(largestId));
    else if (at("user"))
        attributes.user = ownerName();
    else if (at("group"))
        attributes.group = ownerName();
    else if (at("mtime"))
        attributes.modified = time();
    else
        m_xml.skipCurrentElement();
}

void TocReader::readType(TocEntry &entry)
{
    static const QHash<QByteArray, EntryType> known = {
        {"file", EntryType::File},
        {"directory", EntryType::Folder},
        {"symlink", EntryType::Link},
        {"hardlink", EntryType::HardLink},
    };
    const QByteArray link = attribute("link");
    const QByteArray type = text().trimmed();
    if (!known.contains(type))
        refuse("has a member of the type \"" + type + "\", which no package needs");
    entry.type = known.value(type);
    entry.isOriginal = entry.type == EntryType::HardLink && link == "original";
    if (entry.isOriginal)
        entry.type = EntryType::File;
    if (entry.type == EntryType::HardLink)
        entry.target = link;
}

QByteArray TocReader::readName()
{
    const QByteArray encoding = attribute("enctype");
    const QByteArray written = text();
    if (encoding.isEmpty())
        return written;
    const auto decoded = QByteArray::fromBase64Encoding(written.simplified().replace(' ', ""),
                                                        QByteArray::AbortOnBase64DecodingErrors);
    if (encoding != "base64" || !decoded)
        refuse("has a name that cannot be decoded");
    return *decoded;
}

MemberData TocReader::readData()
{
    MemberData data;
    QSet<QByteArray> seen;
    while (m_xml.readNextStartElement()) {
        if (seen.contains(m_xml.name()))
            refuse("says twice where a member lies");
        seen.insert(m_xml.name());
        readDataProperty(data);
    }
    return data;
}

void TocReader::readDataProperty(MemberData &data)
{
    if (at("offset"))
        data.offset = number();
    else if (at("length"))
        data.length = number();
    else if (at("size"))
        data.size = number();
    else if (at("archived-checksum"))
        data.archived = readChecksum();
    else if (at("extracted-checksum"))
        data.extracted = readChecksum();
    else if (at("encoding")) {
        data.encoding = encodingNamed(attribute("style"));
        m_xml.skipCurrentElement();
    } else
        m_xml.skipCurrentElement();
}

std::optional<Checksum> TocReader::readChecksum()
{
    const std::optional<DigestAlgorithm> algorithm = digestAlgorithmNamed(attribute("style"));
    const QByteArray hex = text().trimmed().toLower();
    if (!algorithm)
        return std::nullopt;
    const QByteArray digest = QByteArray::fromHex(hex);
    if (digest.size() != digestLength(*algorithm) || digest.toHex() != hex)
        refuse("has a malformed checksum");
    return Checksum{*algorithm, digest};
}

void TocReader::finishEntry(TocEntry &entry, int depth)
{
    requireFileName(entry.name);
    within(entry.name, [&] {
        if (entry.type != EntryType::Folder && !entry.children.empty())
            refuse("has members below something that is no folder");
        if (entry.type != EntryType::File)
            entry.data.reset();
        if (entry.type == EntryType::Link)
            requireTargetInside(entry.target, depth - 1);
        if (entry.data)
            requireSoundData(*entry.data);
    });
    if (entry.type == EntryType::HardLink)
        m_hardLinkTargets.append(entry.target);
    if (entry.type == EntryType::File)
        m_fileIds.insert(entry.id);
}

void TocReader::requireSoundData(const MemberData &data) const
{
    if (data.offset > m_heapLength || data.length > m_heapLength - data.offset)
        throw Error("its bytes would lie beyond the end of the file");
    if (data.encoding == Encoding::Stored && data.size != data.length)
        throw Error("its size is not that of its bytes");
}

void TocReader::requireHardLinkTargets() const
{
    for (const QByteArray &target : m_hardLinkTargets)
        if (target.isEmpty() || !m_fileIds.contains(target))
            refuse("has a hard link to a member that is not there");
}

qint64 TocReader::number(qint64 largest, int base)
{
    const QByteArray digits = text().trimmed();
    bool valid = false;
    const qint64 value = digits.toLongLong(&valid, base);
    if (!valid || !consistsOf(digits, '0', base == 8 ? '7' : '9') || value > largest)
        refuse("has the number \"" + digits.left(40) + "\", which is out of range");
    return value;
}

QByteArray TocReader::ownerName()
{
    const QByteArray name = text().trimmed();
    if (!name.isEmpty() && (!consistsOf(name, ' ', '~') || name.size() > 255))
        refuse("has an owner with an impossible name");
    return name;
}

std::optional<qint64> TocReader::time()
{
    QDateTime parsed = QDateTime::fromString(QString::fromUtf8(text().trimmed()), Qt::ISODate);
    if (!parsed.isValid())
        return std::nullopt;
    if (parsed.timeSpec() == Qt::LocalTime)
        parsed.setTimeZone(QTimeZone::utc());
    return parsed.toSecsSinceEpoch();
}

} // namespace

Toc readToc(const QByteArray &xml, qint64 heapLength)
{
    // UTF-16 is recognised without a declaration.
    if (xml.contains('\0'))
        refuse("is not UTF-8");
    return TocReader(xml, heapLength).read();
}

} // namespace FlatPkg
