// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosttools/base/Files.h"
#include "hosttools/flatpkg/Toc.h"

#include <functional>

namespace FlatPkg {

/// The bytes of a member.
struct MemberBytes
{
    FileDescriptor file;
    std::optional<QByteArray> sha1; ///< of the bytes as they are now, when it is known
};

/// Opens the bytes of the member at a path in the archive.
using MemberSource = std::function<MemberBytes(const QByteArray &path)>;

/// Writes a xar archive to an empty file that is open for reading, too. Of each entry's data only the size is
/// looked at; where the bytes lie and their checksums are filled in here, and given back with all the rest.
///
/// The form is the one that every known reader takes: a 28-byte header, a stored table of contents, its
/// SHA-1 at offset 0 of the heap, members stored with SHA-1 checksums. The largest member comes last and
/// starts on a page boundary, from 1 MiB on at a multiple of 64 KiB (blank lines after the table of contents
/// see to that), so that the kernel can share blocks and copy in large pieces. Throws Error, also when a
/// member changes meanwhile; the file is then good for nothing.
Toc writeXar(std::vector<TocEntry> entries, const MemberSource &source, int to);

} // namespace FlatPkg
