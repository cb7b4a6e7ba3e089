// SPDX-License-Identifier: Apache-2.0
#include "package/contents/TableOfContents.h"

#include "config/XmlStream.h"
#include "package/contents/ArchiveHead.h"
#include "package/contents/Unpacking.h"

#include <QFile>
#include <QHash>

#include <algorithm>
#include <limits>

namespace {

constexpr int mostEntries = 100 * 1000;
constexpr int longestPath = 4096;

/// An entry while it is read: its name may come after what lies below it.
struct RawEntry
{
    ContentsEntry entry;
    int parent = -1;
    QString id;
    QString name;
    QString link; ///< "original", or the id of the file that it is another name of
};

class TableReader : public XmlStream::Handler
{
public:
    Result<> startElement(const QString &name, const QVector<XmlStream::Attribute> &attributes) override;
    Result<> text(const QString &text) override;
    Result<> endElement() override;

    /// With their paths, and offsets in the file.
    Result<QList<ContentsEntry>> entries(qint64 heap);

private:
    bool isEntry(const QString &name) const;
    Result<> startEntry(const QVector<XmlStream::Attribute> &attributes);
    void startProperty(const QString &name, const QVector<XmlStream::Attribute> &attributes);
    Result<> takeProperty();
    Result<> takeName();
    Result<> takeNumber(const QString &name);
    void takeText(const QString &name);
    RawEntry &current() { return m_entries[m_open.last()]; }

    QStringList m_elements;
    QVector<int> m_levels; ///< where in the elements each open entry stands
    QVector<int> m_open;
    QList<RawEntry> m_entries;
    QString m_text;
    QString m_property; ///< path below the entry: "data/size"
    bool m_isBase64 = false;
};

QString valueOf(const QVector<XmlStream::Attribute> &attributes, const QString &name)
{
    for (const XmlStream::Attribute &attribute : attributes) {
        if (attribute.name == name)
            return attribute.value;
    }
    return {};
}

/// The elements are xar, toc, and one for each entry.
bool TableReader::isEntry(const QString &name) const
{
    return name == QLatin1String("file") && m_elements.size() == 2 + m_open.size() &&
           m_elements.at(1) == QLatin1String("toc");
}

Result<> TableReader::startElement(const QString &name, const QVector<XmlStream::Attribute> &attributes)
{
    const bool startsEntry = isEntry(name);
    m_elements.append(name);
    m_text.clear();
    if (startsEntry)
        return startEntry(attributes);
    if (!m_open.isEmpty())
        startProperty(name, attributes);
    return {};
}

Result<> TableReader::startEntry(const QVector<XmlStream::Attribute> &attributes)
{
    if (m_entries.size() == mostEntries)
        return Problem{{}, QStringLiteral("it lists more than %1 files").arg(mostEntries)};
    RawEntry entry;
    entry.parent = m_open.isEmpty() ? -1 : m_open.last();
    entry.id = valueOf(attributes, QStringLiteral("id"));
    m_open.append(static_cast<int>(m_entries.size()));
    m_entries.append(entry);
    return {};
}

void TableReader::startProperty(const QString &name, const QVector<XmlStream::Attribute> &attributes)
{
    m_property = m_elements.mid(2 + m_open.size()).join(QLatin1Char('/'));
    m_isBase64 = valueOf(attributes, QStringLiteral("enctype")) == QLatin1String("base64");
    const QString style = valueOf(attributes, QStringLiteral("style"));
    if (m_property == QLatin1String("data/extracted-checksum"))
        current().entry.checksum.style = style.toLower().toLatin1();
    else if (m_property == QLatin1String("data/encoding"))
        current().entry.encoding = style;
    else if (name == QLatin1String("type") && m_property == name)
        current().link = valueOf(attributes, QStringLiteral("link"));
}

Result<> TableReader::text(const QString &text)
{
    if (!m_open.isEmpty())
        m_text += text;
    return {};
}

Result<> TableReader::endElement()
{
    const bool endsEntry = !m_open.isEmpty() && m_elements.size() == 2 + m_open.size();
    Result<> taken;
    if (endsEntry)
        m_open.removeLast();
    else if (!m_open.isEmpty())
        taken = takeProperty();
    m_elements.removeLast();
    m_text.clear();
    m_property.clear();
    return taken;
}

Result<> TableReader::takeProperty()
{
    if (m_property == QLatin1String("name"))
        return takeName();
    takeText(m_property);
    return takeNumber(m_property);
}

/// Of two names the first counts.
Result<> TableReader::takeName()
{
    if (!current().name.isEmpty())
        return {};
    const QByteArray bytes = m_isBase64 ? QByteArray::fromBase64(m_text.toLatin1()) : m_text.toUtf8();
    current().name = QString::fromUtf8(bytes);
    const bool isName = !bytes.isEmpty() && current().name.toUtf8() == bytes && !bytes.contains('/') &&
                        !bytes.contains('\0') && bytes != "." && bytes != "..";
    return isName ? Result<>() : Problem{{}, QStringLiteral("a file in it has a name that is none")};
}

void TableReader::takeText(const QString &name)
{
    ContentsEntry &entry = current().entry;
    if (name == QLatin1String("type"))
        entry.type = m_text.trimmed();
    else if (name == QLatin1String("link"))
        entry.target = m_text;
    else if (name == QLatin1String("data/extracted-checksum"))
        entry.checksum.digits = m_text.trimmed().toLower().toLatin1();
}

Result<> TableReader::takeNumber(const QString &name)
{
    ContentsEntry &entry = current().entry;
    const int base = name == QLatin1String("mode") ? 8 : 10;
    bool isNumber = false;
    const qint64 number = m_text.trimmed().toLongLong(&isNumber, base);
    constexpr qint64 largest = Q_INT64_C(1) << 60;
    const bool isUsable = isNumber && number >= 0 && number < largest;
    if (name == QLatin1String("mode"))
        entry.mode = static_cast<int>(number & 07777);
    else if (name == QLatin1String("uid"))
        entry.uid = number;
    else if (name == QLatin1String("gid"))
        entry.gid = number;
    else if (name == QLatin1String("data/size"))
        entry.size = number;
    else if (name == QLatin1String("data/length"))
        entry.length = number;
    else if (name == QLatin1String("data/offset"))
        entry.offset = number;
    else
        return {};
    return isUsable ? Result<>()
                    : Problem{{},
                              QStringLiteral("the %1 of a file in it is no number")
                                  .arg(name.section(QLatin1Char('/'), -1))};
}

Result<QList<ContentsEntry>> TableReader::entries(qint64 heap)
{
    QHash<QString, QString> pathOfId;
    for (RawEntry &raw : m_entries) {
        const QString folder =
            raw.parent < 0 ? QString() : m_entries.at(raw.parent).entry.path + QLatin1Char('/');
        raw.entry.path = folder + raw.name;
        raw.entry.offset += heap;
        if (raw.name.isEmpty() || raw.entry.path.size() > longestPath)
            return Problem{{}, QStringLiteral("a file in it has no name, or one that is too long")};
        pathOfId.insert(raw.id, raw.entry.path);
    }
    QList<ContentsEntry> entries;
    for (RawEntry &raw : m_entries) {
        if (raw.link == QLatin1String("original"))
            raw.entry.type = QStringLiteral("file");
        else if (!raw.link.isEmpty())
            raw.entry.target = pathOfId.value(raw.link);
        entries.append(raw.entry);
    }
    return entries;
}

Problem damaged(const QString &package, const QString &why)
{
    return {package, QStringLiteral("its table of contents cannot be read (%1); get the package again from "
                                    "where it came")
                         .arg(why)};
}

Result<ArchiveHead> headOf(const QString &package)
{
    QFile file(package);
    if (file.open(QIODevice::ReadOnly))
        return ArchiveHead::read(file);
    return Problem{package, QStringLiteral("cannot be read (%1)").arg(file.errorString())};
}

Result<QByteArray> plainTable(const QString &package, const ArchiveHead &head)
{
    const Bytes bytes = unpacked(bytesOfFile(package, head.toc, head.tocLength), Packing::Deflate);
    QByteArray table(static_cast<int>(head.plainLength), Qt::Uninitialized);
    char beyond = 0;
    if (!bytes->readAll(table.data(), head.plainLength) || bytes->read(&beyond, 1) != 0)
        return damaged(package, QStringLiteral("it is not as long as it says"));
    return table;
}

std::optional<Packing> packingOf(const QString &encoding)
{
    static const QHash<QString, Packing> packings{
        {QString(), Packing::None},
        {QStringLiteral("application/octet-stream"), Packing::None},
        {QStringLiteral("application/x-gzip"), Packing::Deflate},
        {QStringLiteral("application/x-bzip2"), Packing::Bzip2},
        {QStringLiteral("application/x-lzma"), Packing::Lzma},
        {QStringLiteral("application/x-xz"), Packing::Lzma},
    };
    const auto found = packings.find(encoding);
    return found == packings.end() ? std::nullopt : std::optional(*found);
}

/// Where there are none.
class NoBytes : public ByteStream
{
public:
    qint64 read(char *, qint64) override { return -1; }
};

} // namespace

bool ContentsEntry::isScripts() const
{
    return isFile() && (path == QLatin1String("Scripts") || path.endsWith(QLatin1String(".pkg/Scripts")));
}

const ContentsEntry *TableOfContents::find(const QString &path) const
{
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&path](const ContentsEntry &entry) { return entry.path == path; });
    return found == entries.end() ? nullptr : &*found;
}

Bytes TableOfContents::bytesOf(const ContentsEntry &entry) const
{
    const std::optional<Packing> packing = packingOf(entry.encoding);
    if (!packing)
        return std::make_unique<NoBytes>();
    return unpacked(bytesOfFile(package, entry.offset, entry.length), *packing);
}

Result<TableOfContents> TableOfContents::read(const QString &package)
{
    const Result<ArchiveHead> head = headOf(package);
    if (!head)
        return head.problem();
    const Result<QByteArray> table = plainTable(package, *head);
    if (!table)
        return table.problem();
    XmlStream::Limits limits;
    limits.bytes = head->plainLength;
    limits.nodes = std::numeric_limits<int>::max();
    TableReader reader;
    if (const Result<> isRead = XmlStream::read(*table, reader, limits); !isRead)
        return damaged(package, isRead.problem().text);
    const Result<QList<ContentsEntry>> entries = reader.entries(head->heap());
    if (!entries)
        return damaged(package, entries.problem().text);
    return TableOfContents{package, *entries};
}

Result<QByteArray> contentsOf(const TableOfContents &table, const ContentsEntry &entry)
{
    constexpr qint64 largest = 16LL * 1024 * 1024;
    QByteArray bytes(static_cast<int>(std::min(entry.size, largest)), Qt::Uninitialized);
    if (entry.size > largest || !table.bytesOf(entry)->readAll(bytes.data(), bytes.size()))
        return Problem{table.package, QStringLiteral("its %1 cannot be read").arg(entry.path)};
    return bytes;
}
