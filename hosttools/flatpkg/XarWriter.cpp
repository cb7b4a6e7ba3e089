// SPDX-License-Identifier: Apache-2.0
#include "hosttools/flatpkg/XarWriter.h"

#include "hosttools/base/Error.h"
#include "hosttools/flatpkg/ByteRange.h"
#include "hosttools/flatpkg/VerifiedDigest.h"
#include "hosttools/flatpkg/XarHead.h"

#include <algorithm>

namespace FlatPkg {

namespace {

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

[[noreturn]] void refuseChanged()
{
    throw Error("has changed while it was packed");
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
    const XarHead head = xarHead(tocText());
    if (head.bytes.size() != m_heapOffset)
        throw Error("its table of contents has changed its length");
    writeAt(0, head.bytes);
    writeAt(m_heapOffset, head.tocDigest);
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

void XarWriter::alignLargest()
{
    const MemberData last = m_members.empty() ? MemberData() : *m_members.back().data;
    m_padding = blankLinesFor(tocText(), {last.offset, 0, sharingUnitFor(last.size)});
    m_heapOffset = xarHead(tocText()).bytes.size();
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
