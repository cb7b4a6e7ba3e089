// SPDX-License-Identifier: Apache-2.0
#include "hosttools/flatpkg/XarWriter.h"

#include "hosttools/flatpkg/ByteRange.h"
#include "hosttools/flatpkg/Error.h"
#include "hosttools/flatpkg/VerifiedDigest.h"

#include <algorithm>
#include <QtEndian>
#include <zlib.h>

namespace FlatPkg {

namespace {

constexpr int headerSize = 28;

/// The kernel shares pages. It copies in pieces of 64 KiB, and each of them is one in memory only where it
/// begins at a multiple of that, which a small member is not worth.
qint64 alignmentFor(qint64 size)
{
    return size < worthRemembering ? 4096 : 64 * 1024;
}
constexpr quint32 sha1Number = 1;

struct Member
{
    QByteArray path;
    MemberData *data;
};

void collect(std::vector<TocEntry> &entries, const QByteArray &folder, std::vector<Member> &members)
{
    for (TocEntry &entry : entries) {
        if (entry.data)
            members.push_back({folder + entry.name, &*entry.data});
        collect(entry.children, folder + entry.name + '/', members);
    }
}

/// A zlib stream of stored blocks: its length depends on the length of the text alone.
QByteArray stored(const QByteArray &text)
{
    uLongf length = compressBound(static_cast<uLong>(text.size()));
    QByteArray stream(static_cast<int>(length), Qt::Uninitialized);
    const int result = compress2(reinterpret_cast<Bytef *>(stream.data()), &length,
                                 reinterpret_cast<const Bytef *>(text.constData()),
                                 static_cast<uLong>(text.size()), Z_NO_COMPRESSION);
    if (result != Z_OK)
        throw Error("its table of contents cannot be packed");
    return stream.left(static_cast<int>(length));
}

[[noreturn]] void refuseChanged()
{
    throw Error("has changed while it was packed");
}

template <typename Integer> QByteArray bigEndian(Integer value)
{
    QByteArray bytes(sizeof value, Qt::Uninitialized);
    qToBigEndian(value, bytes.data());
    return bytes;
}

class XarWriter
{
public:
    XarWriter(std::vector<TocEntry> entries, const MemberSource &source, int to)
        : m_toc{std::nullopt, std::move(entries)}
        , m_source(source)
        , m_to(to)
    {
        collect(m_toc.entries, QByteArray(), m_members);
    }

    Toc write();

private:
    void layOut();
    void alignLargest();
    void writeMember(const Member &member);
    QByteArray copy(const MemberBytes &bytes, qint64 size, qint64 offset) const;
    QByteArray tocText() const { return writeToc(m_toc) + QByteArray(m_padding, '\n'); }
    void writeAt(qint64 offset, const QByteArray &bytes) const
    {
        writeAll(m_to, bytes.constData(), bytes.size(), offset);
    }

    Toc m_toc;
    const MemberSource &m_source;
    int m_to;
    std::vector<Member> m_members;
    int m_padding = 0;
    qint64 m_heapOffset = 0;
};

Toc XarWriter::write()
{
    layOut();
    alignLargest();
    for (const Member &member : m_members)
        within(member.path, [&] { writeMember(member); });
    // All digests are known only now; they are as long as those it was laid out with.
    const QByteArray text = tocText();
    const QByteArray toc = stored(text);
    if (headerSize + toc.size() != m_heapOffset)
        throw Error("its table of contents has changed its length");
    writeAt(0, "xar!" + bigEndian<quint16>(headerSize) + bigEndian<quint16>(1) +
                   bigEndian<quint64>(static_cast<quint64>(toc.size())) +
                   bigEndian<quint64>(static_cast<quint64>(text.size())) + bigEndian(sha1Number));
    writeAt(headerSize, toc);
    writeAt(m_heapOffset, digestOf(DigestAlgorithm::Sha1, toc));
    return std::move(m_toc);
}

void XarWriter::layOut()
{
    const auto smaller = [](const Member &a, const Member &b) { return a.data->size < b.data->size; };
    const auto largest = std::max_element(m_members.begin(), m_members.end(), smaller);
    if (largest != m_members.end())
        std::rotate(largest, largest + 1, m_members.end());
    qint64 offset = digestLength(DigestAlgorithm::Sha1);
    const Checksum unknown{DigestAlgorithm::Sha1, QByteArray(static_cast<int>(offset), '\0')};
    for (const Member &member : m_members) {
        const qint64 size = member.data->size;
        *member.data = {offset, size, size, Encoding::Stored, unknown, unknown};
        offset += size;
    }
}

/// Blank lines can begin another stored block, which takes a few bytes itself: hence several tries, and a
/// place farther behind when the one before cannot be met.
void XarWriter::alignLargest()
{
    const MemberData last = m_members.empty() ? MemberData() : *m_members.back().data;
    const qint64 alignment = alignmentFor(last.size);
    const auto place = [&] {
        m_heapOffset = headerSize + stored(tocText()).size();
        return m_heapOffset + last.offset;
    };
    const qint64 first = (place() + alignment - 1) / alignment * alignment;
    for (int tries = 0; tries < 8; ++tries) {
        const qint64 wanted = first + tries / 4 * alignment;
        m_padding = static_cast<int>(std::max<qint64>(0, m_padding + wanted - place()));
        if (place() == wanted)
            return;
    }
}

void XarWriter::writeMember(const Member &member)
{
    const MemberBytes bytes = m_source(member.path);
    MemberData &data = *member.data;
    const QByteArray before = fingerprintOf(bytes.file.get());
    if (statusOf(bytes.file.get()).st_size != data.size)
        refuseChanged();
    const QByteArray sha1 = copy(bytes, data.size, m_heapOffset + data.offset);
    if (fingerprintOf(bytes.file.get()) != before)
        refuseChanged();
    data.archived = data.extracted = Checksum{DigestAlgorithm::Sha1, sha1};
}

QByteArray XarWriter::copy(const MemberBytes &bytes, qint64 size, qint64 offset) const
{
    const ByteRange from{bytes.file.get(), 0, size};
    if (!bytes.sha1)
        return copyAndDigest(from, m_to, offset, {DigestAlgorithm::Sha1}).value(DigestAlgorithm::Sha1);
    copyRange(from, m_to, offset);
    return *bytes.sha1;
}

} // namespace

Toc writeXar(std::vector<TocEntry> entries, const MemberSource &source, int to)
{
    return XarWriter(std::move(entries), source, to).write();
}

} // namespace FlatPkg
