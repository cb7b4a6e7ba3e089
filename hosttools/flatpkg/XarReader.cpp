// SPDX-License-Identifier: Apache-2.0
#include "hosttools/flatpkg/XarReader.h"

#include "hosttools/base/Error.h"
#include "hosttools/flatpkg/ByteRange.h"
#include "hosttools/flatpkg/EntryPath.h"
#include "hosttools/flatpkg/VerifiedDigest.h"

#include <algorithm>
#include <QtEndian>
#include <utility>
#include <zlib.h>

namespace FlatPkg {

namespace {

constexpr int shortestHeader = 28;
constexpr int longestHeader = 4096;

[[noreturn]] void refuseForeign()
{
    throw Error("not a flat package; choose an installer package");
}

[[noreturn]] void refuseDamaged(const QByteArray &what)
{
    throw Error(what + "; the package is damaged, get it again from where it came");
}

void require(const std::optional<Checksum> &checksum, const Digests &digests)
{
    if (checksum && digests.value(checksum->algorithm) != checksum->digest)
        refuseDamaged("its checksum is wrong");
}

QVector<DigestAlgorithm> algorithmsFor(const std::optional<Checksum> &checksum)
{
    return checksum ? QVector<DigestAlgorithm>{checksum->algorithm} : QVector<DigestAlgorithm>();
}

QVector<DigestAlgorithm> algorithmsForStored(const MemberData &data)
{
    QVector<DigestAlgorithm> algorithms = algorithmsFor(data.archived) + algorithmsFor(data.extracted);
    if (data.size >= worthRemembering)
        algorithms.append(DigestAlgorithm::Sha1);
    std::sort(algorithms.begin(), algorithms.end());
    algorithms.erase(std::unique(algorithms.begin(), algorithms.end()), algorithms.end());
    return algorithms;
}

const TocEntry *childNamed(const std::vector<TocEntry> &entries, const QByteArray &name)
{
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&](const TocEntry &entry) { return entry.name == name; });
    return found == entries.end() ? nullptr : &*found;
}

using Visitor = std::function<void(const QByteArray &, const TocEntry &)>;

void forEachIn(const std::vector<TocEntry> &entries, const QByteArray &folder, const Visitor &visit)
{
    for (const TocEntry &entry : entries) {
        const QByteArray path = folder + entry.name;
        visit(path, entry);
        forEachIn(entry.children, path + '/', visit);
    }
}

} // namespace

XarReader::XarReader(FileDescriptor file, AlteredToc altered)
    : m_file(std::move(file))
{
    readHeader();
    readTableOfContents();
    if (altered == AlteredToc::Refused && !m_isTocIntact)
        refuseDamaged("the checksum of its table of contents is wrong");
}

void XarReader::readHeader()
{
    m_size = statusOf(m_file.get()).st_size;
    char header[shortestHeader];
    if (m_size < shortestHeader)
        refuseForeign();
    readExactly(m_file.get(), header, shortestHeader, 0);
    m_tocOffset = qFromBigEndian<quint16>(header + 4);
    const auto compressed = qFromBigEndian<quint64>(header + 8);
    const auto plain = qFromBigEndian<quint64>(header + 16);
    const bool known = qFromBigEndian<quint16>(header + 6) <= 1;
    if (qstrncmp(header, "xar!", 4) != 0 || !known || m_tocOffset < shortestHeader ||
        m_tocOffset > longestHeader)
        refuseForeign();
    if (plain > largestToc || compressed > largestToc)
        throw Error("its table of contents is too large");
    if (m_tocOffset + static_cast<qint64>(compressed) > m_size)
        refuseDamaged("the file ends too early");
    m_tocCompressed = static_cast<qint64>(compressed);
    m_tocLength = static_cast<qint64>(plain);
    m_heapOffset = m_tocOffset + m_tocCompressed;
}

void XarReader::readTableOfContents()
{
    QByteArray compressed(static_cast<int>(m_tocCompressed), Qt::Uninitialized);
    readExactly(m_file.get(), compressed.data(), m_tocCompressed, m_tocOffset);
    m_tocXml.resize(static_cast<int>(m_tocLength));
    auto plainLength = static_cast<uLongf>(m_tocLength);
    auto usedLength = static_cast<uLong>(m_tocCompressed);
    const int result = uncompress2(reinterpret_cast<Bytef *>(m_tocXml.data()), &plainLength,
                                   reinterpret_cast<const Bytef *>(compressed.constData()), &usedLength);
    if (result != Z_OK || plainLength != static_cast<uLongf>(m_tocLength) ||
        usedLength != static_cast<uLong>(m_tocCompressed))
        refuseDamaged("its table of contents cannot be unpacked");
    m_toc = readToc(m_tocXml, m_size - m_heapOffset);
    verifyTableOfContents(compressed);
}

void XarReader::verifyTableOfContents(const QByteArray &compressed)
{
    if (!m_toc.checksum)
        return;
    QByteArray expected(static_cast<int>(m_toc.checksum->size), Qt::Uninitialized);
    readExactly(m_file.get(), expected.data(), expected.size(), m_heapOffset + m_toc.checksum->offset);
    m_tocDigest = digestOf(m_toc.checksum->algorithm, compressed);
    m_isTocIntact = m_tocDigest == expected;
}

const TocEntry *XarReader::find(const QByteArray &path) const
{
    const std::vector<TocEntry> *entries = &m_toc.entries;
    const TocEntry *entry = nullptr;
    for (const QByteArray &name : componentsOf(path)) {
        entry = childNamed(*entries, name);
        if (!entry)
            return nullptr;
        entries = &entry->children;
    }
    return entry;
}

std::optional<QByteArray> XarReader::extract(const TocEntry &entry, int to) const
{
    if (!entry.data)
        return std::nullopt;
    if (entry.data->encoding == Encoding::Stored) {
        const Digests digests = copyStored(*entry.data, to);
        const auto sha1 = digests.find(DigestAlgorithm::Sha1);
        return sha1 == digests.end() ? std::nullopt : std::make_optional(*sha1);
    }
    qint64 written = 0;
    decode(*entry.data, [&](const char *bytes, qint64 count) {
        writeAll(to, bytes, count, written);
        written += count;
    });
    return std::nullopt;
}

QByteArray XarReader::contents(const TocEntry &entry, qint64 limit) const
{
    QByteArray bytes;
    if (!entry.data)
        return bytes;
    if (entry.data->size > limit)
        throw Error("it is too large");
    decode(*entry.data,
           [&](const char *piece, qint64 count) { bytes.append(piece, static_cast<int>(count)); });
    return bytes;
}

Digests XarReader::copyStored(const MemberData &data, int to) const
{
    const ByteRange range{m_file.get(), m_heapOffset + data.offset, data.length};
    const Digests digests = copyAndDigest(range, to, 0, algorithmsForStored(data));
    require(data.archived, digests);
    require(data.extracted, digests);
    return digests;
}

void XarReader::decode(const MemberData &data, const Decoder::Sink &sink) const
{
    DigestSet archived(algorithmsFor(data.archived));
    DigestSet extracted(algorithmsFor(data.extracted));
    qint64 size = 0;
    const Decoder::Sink checkedSink = [&](const char *bytes, qint64 count) {
        size += count;
        if (size > data.size)
            refuseDamaged("it is larger than it says");
        extracted.add(bytes, count);
        sink(bytes, count);
    };
    const std::unique_ptr<Decoder> decoder = Decoder::create(data.encoding);
    forEachPiece({m_file.get(), m_heapOffset + data.offset, data.length},
                 [&](const char *bytes, qint64 count, qint64) {
                     archived.add(bytes, count);
                     decoder->decode(bytes, count, checkedSink);
                 });
    decoder->requireEnd();
    if (size != data.size)
        refuseDamaged("it is smaller than it says");
    require(data.archived, archived.finish());
    require(data.extracted, extracted.finish());
}

void forEachEntry(const Toc &toc, const Visitor &visit)
{
    forEachIn(toc.entries, QByteArray(), visit);
}

} // namespace FlatPkg
