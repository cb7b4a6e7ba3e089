// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

namespace FlatPkg {

/// What stands before the heap of a xar archive: a 28-byte header and the table of contents, stored, so that
/// its length depends on the length of the text alone.
struct XarHead
{
    QByteArray bytes;
    QByteArray tocDigest; ///< SHA-1 of the table as it stands there
};

/// Throws Error when the table cannot be packed.
XarHead xarHead(const QByteArray &tocText);

/// Where something is to lie in an archive: `distance` bytes behind the start of the heap, at a place in the
/// file that leaves `remainder` when it is divided by `unit`.
struct HeapAlignment
{
    qint64 distance = 0;
    qint64 remainder = 0;
    qint64 unit = 1;
};

/// The number of blank lines behind the table of contents that brings it there.
int blankLinesFor(const QByteArray &tocText, const HeapAlignment &alignment);

/// In which units the kernel shares or copies this many bytes best.
qint64 sharingUnitFor(qint64 size);

} // namespace FlatPkg
