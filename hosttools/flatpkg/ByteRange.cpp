// SPDX-License-Identifier: Apache-2.0
#include "hosttools/flatpkg/ByteRange.h"

#include "hosttools/flatpkg/DigestThread.h"
#include "hosttools/flatpkg/Error.h"
#include "hosttools/flatpkg/Files.h"
#include "hosttools/flatpkg/Interrupt.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace FlatPkg {

namespace {

// Small enough to stay in the processor's cache between reading and hashing.
constexpr qint64 bufferSize = 128 * 1024;
// How much the kernel copies before we look whether we have been asked to stop.
constexpr qint64 kernelStep = 64 * 1024 * 1024;
// As much as the hashing thread has buffered, so that it has work while the kernel copies.
constexpr qint64 copyStep = 4 * 1024 * 1024;
// Large enough for the disk to write in one go.
constexpr qint64 writeBackStep = 32 * 1024 * 1024;
// Below this a second thread costs more than it saves.
constexpr qint64 worthAThread = 1024 * 1024;

bool kernelCannotCopyThese(int error)
{
    return error == EXDEV || error == EINVAL || error == ENOSYS || error == EOPNOTSUPP || error == EPERM;
}

/// Copies as much as the kernel takes and says how much that was.
qint64 copyInKernel(const ByteRange &from, int to, qint64 toOffset)
{
    loff_t source = from.offset;
    loff_t target = toOffset;
    const qint64 end = from.offset + from.length;
    while (source < end) {
        Interrupt::check();
        const auto step = static_cast<size_t>(std::min<qint64>(end - source, kernelStep));
        const ssize_t copied = copy_file_range(from.fd, &source, to, &target, step, 0);
        if (copied == 0 || (copied < 0 && kernelCannotCopyThese(errno)))
            break;
        if (copied < 0 && errno != EINTR)
            throw systemError("cannot be written");
    }
    return source - from.offset;
}

void copyThroughBuffer(const ByteRange &from, int to, qint64 toOffset)
{
    forEachPiece(from, [&](const char *bytes, qint64 count, qint64 done) {
        writeAll(to, bytes, count, toOffset + done);
    });
}

} // namespace

void forEachPiece(const ByteRange &range, const PieceConsumer &consume)
{
    QByteArray buffer(static_cast<int>(std::min(bufferSize, range.length)), Qt::Uninitialized);
    for (qint64 done = 0; done < range.length;) {
        Interrupt::check();
        const qint64 step = std::min<qint64>(buffer.size(), range.length - done);
        readExactly(range.fd, buffer.data(), step, range.offset + done);
        consume(buffer.constData(), step, done);
        done += step;
    }
}

void copyRange(const ByteRange &from, int to, qint64 toOffset)
{
    const qint64 done = copyInKernel(from, to, toOffset);
    copyThroughBuffer({from.fd, from.offset + done, from.length - done}, to, toOffset + done);
}

void copyAndWriteBack(const ByteRange &from, int to, qint64 toOffset)
{
    for (qint64 done = 0; done < from.length; done += writeBackStep) {
        const qint64 count = std::min(writeBackStep, from.length - done);
        copyRange({from.fd, from.offset + done, count}, to, toOffset + done);
        // The last quarter is left to the sync: a disk kept busy to the end slows the copying down by more
        // than it saves. Only a hint: where it is not taken, the sync does all the work.
        if (done < from.length / 4 * 3)
            static_cast<void>(sync_file_range(to, toOffset + done, count, SYNC_FILE_RANGE_WRITE));
    }
}

Digests digestsOf(const ByteRange &range, const QVector<DigestAlgorithm> &algorithms)
{
    DigestSet digests(algorithms);
    if (!algorithms.isEmpty())
        forEachPiece(range, [&](const char *bytes, qint64 count, qint64) { digests.add(bytes, count); });
    return digests.finish();
}

Digests copyAndDigest(const ByteRange &from, int to, qint64 toOffset,
                      const QVector<DigestAlgorithm> &algorithms)
{
    if (algorithms.isEmpty() || from.length < worthAThread) {
        copyRange(from, to, toOffset);
        return digestsOf(from, algorithms);
    }
    DigestThread digests(algorithms);
    for (qint64 done = 0; done < from.length; done += copyStep) {
        const ByteRange part{from.fd, from.offset + done, std::min(copyStep, from.length - done)};
        copyRange(part, to, toOffset + done);
        digests.add(part);
    }
    return digests.finish();
}

} // namespace FlatPkg
