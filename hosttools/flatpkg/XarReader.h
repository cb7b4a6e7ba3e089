// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosttools/base/Files.h"
#include "hosttools/flatpkg/Toc.h"

#include <functional>

namespace FlatPkg {

/// A xar archive opened for reading. Format: a header of at least 28 bytes in network byte order ("xar!",
/// its size, the version, the compressed and the plain length of the table of contents, the checksum
/// algorithm), a zlib stream with the table of contents, the heap. What follows the members in the heap,
/// such as a stapled ticket, is ignored.
class XarReader
{
public:
    /// Opens the file, reads and checks the table of contents and nothing else. Throws Error, without the
    /// path, when it is no such archive, is damaged or hostile.
    explicit XarReader(const QByteArray &path)
        : XarReader(openInput(path))
    {
    }
    /// Whoever judges signatures wants to see an altered table, too.
    enum class AlteredToc { Refused, Accepted };
    explicit XarReader(FileDescriptor file, AlteredToc altered = AlteredToc::Refused);

    /// The digest of the table of contents, and whether it is the one in the heap; true without any.
    const QByteArray &tocDigest() const { return m_tocDigest; }
    bool isTocIntact() const { return m_isTocIntact; }

    const Toc &toc() const { return m_toc; }
    const QByteArray &tocXml() const { return m_tocXml; }

    /// Where the heap begins in the file.
    qint64 heapOffset() const { return m_heapOffset; }
    int descriptor() const { return m_file.get(); }

    /// The size of the whole file in bytes.
    qint64 size() const { return m_size; }

    /// The member at a path such as "Resources/en.lproj/Localizable.strings"; null when there is none.
    /// The archive owns it.
    const TocEntry *find(const QByteArray &path) const;

    /// Writes the decoded bytes of a file to an empty file and checks its size and every checksum that
    /// it has. Gives the SHA-1 of the decoded bytes when it was computed on the way, as it always is for
    /// large stored members.
    std::optional<QByteArray> extract(const TocEntry &entry, int to) const;

    /// The decoded and checked bytes of a file, which may be no larger than `limit`.
    QByteArray contents(const TocEntry &entry, qint64 limit) const;

private:
    void readHeader();
    void readTableOfContents();
    void verifyTableOfContents(const QByteArray &compressed);
    Digests copyStored(const MemberData &data, int to) const;
    void decode(const MemberData &data, const Decoder::Sink &sink) const;

    FileDescriptor m_file;
    qint64 m_size = 0;
    qint64 m_tocOffset = 0;
    qint64 m_tocCompressed = 0;
    qint64 m_tocLength = 0;
    qint64 m_heapOffset = 0;
    QByteArray m_tocXml;
    Toc m_toc;
    QByteArray m_tocDigest;
    bool m_isTocIntact = true;
};

/// Calls `visit` with every entry and its path, folders before what is in them.
void forEachEntry(const Toc &toc, const std::function<void(const QByteArray &, const TocEntry &)> &visit);

} // namespace FlatPkg
