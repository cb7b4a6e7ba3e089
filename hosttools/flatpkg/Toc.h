// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosttools/flatpkg/Attributes.h"
#include "hosttools/flatpkg/Decoder.h"
#include "hosttools/flatpkg/Digest.h"

#include <vector>

namespace FlatPkg {

struct Checksum
{
    DigestAlgorithm algorithm = DigestAlgorithm::Sha1;
    QByteArray digest; ///< raw bytes
};

/// Where a file's bytes lie in the heap.
struct MemberData
{
    qint64 offset = 0; ///< from the start of the heap
    qint64 length = 0; ///< as they lie there
    qint64 size = 0;   ///< once decoded
    Encoding encoding = Encoding::Stored;
    std::optional<Checksum> archived;  ///< of the bytes as they lie in the heap
    std::optional<Checksum> extracted; ///< of the decoded bytes
};

enum class EntryType { File, Folder, Link, HardLink };

/// A member of a xar archive with everything below it.
struct TocEntry
{
    QByteArray name; ///< raw bytes, a plain file name
    QByteArray id;
    EntryType type = EntryType::File;
    Attributes attributes;
    QByteArray target;       ///< of a link: its path; of a hard link: the id of the file it is a name of
    bool isOriginal = false; ///< a file that hard links name
    std::optional<MemberData> data; ///< none for an empty file
    std::vector<TocEntry> children;
};

/// Where the heap holds the digest of the compressed table of contents.
struct TocChecksum
{
    DigestAlgorithm algorithm = DigestAlgorithm::Sha1;
    qint64 offset = 0;
    qint64 size = 0;
};

/// The table of contents of a xar archive, as far as flat packages need it: extended attributes,
/// signatures and the many times and numbers of the machine it was made on are left out.
struct Toc
{
    std::optional<TocChecksum> checksum;
    std::vector<TocEntry> entries;
};

/// A larger table of contents is refused before it is inflated.
constexpr qint64 largestToc = 64 * 1024 * 1024;

/// Reads and checks a table of contents for a heap of this many bytes. Throws Error, one line, for
/// everything that is malformed, ambiguous or leads outside the archive or the target folder.
Toc readToc(const QByteArray &xml, qint64 heapLength);

/// The document for a table of contents with a SHA-1 checksum. Every member's `<name>` stands before the
/// members below it, because some readers need it there.
QByteArray writeToc(const Toc &toc);

} // namespace FlatPkg
