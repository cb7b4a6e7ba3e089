// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosttools/flatpkg/Digest.h"

#include <functional>

namespace FlatPkg {

/// Bytes in an open file; the descriptor stays the caller's.
struct ByteRange
{
    int fd = -1;
    qint64 offset = 0;
    qint64 length = 0;
};

/// Reads the range in small pieces and hands over each with its distance from the start of the range.
/// Throws Error when the file is shorter than its range.
using PieceConsumer = std::function<void(const char *bytes, qint64 count, qint64 distance)>;
void forEachPiece(const ByteRange &range, const PieceConsumer &consume);

/// Copies in the kernel where the file systems allow it and through a small buffer elsewhere. Throws
/// Error when the source is shorter than its range or the target cannot be written.
void copyRange(const ByteRange &from, int to, qint64 toOffset);

/// Adds the range to digests without copying it. Throws Error when the file is shorter than its range or
/// becomes so meanwhile.
void addToDigests(const ByteRange &range, DigestSet &digests);

/// Copies and gives the digests of what has arrived in the target, which must be open for reading, too. Long
/// ranges are hashed in a second thread, because hashing takes twice as long as copying.
Digests copyAndDigest(const ByteRange &from, int to, qint64 toOffset,
                      const QVector<DigestAlgorithm> &algorithms);

} // namespace FlatPkg
