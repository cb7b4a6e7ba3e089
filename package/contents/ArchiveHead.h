// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

#include <QFile>

/// Where the parts of a flat package lie, as the first bytes of the file say it (xar's header, in big
/// endian).
struct ArchiveHead
{
    qint64 toc = 0;         ///< the table of contents, compressed
    qint64 tocLength = 0;   ///< compressed
    qint64 plainLength = 0; ///< unpacked, 64 MiB at most
    qint64 heap() const { return toc + tocLength; }

    /// Reads it from the start of an open file. A problem for what is no flat package, or has a table that
    /// is too large or does not lie in the file.
    static Result<ArchiveHead> read(QFile &file);
};
