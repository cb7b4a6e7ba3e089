// SPDX-License-Identifier: Apache-2.0
#include "hosttools/flatpkg/ByteRange.h"

#include "hosttools/base/Error.h"
#include "hosttools/base/Files.h"
#include "hosttools/base/Interrupt.h"
#include "hosttools/flatpkg/DigestThread.h"
#include "hosttools/flatpkg/MappedRange.h"

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
// How far the hashing thread is behind at most when the copying ends.
constexpr qint64 copyStep = 2 * 1024 * 1024;
// What is mapped at a time counts as memory of ours.
constexpr qint64 windowSize = 4 * 1024 * 1024;
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

void addWindow(const ByteRange &range, DigestSet &digests)
{
    const MappedRange window(range);
    if (!window.isThere())
        return forEachPiece(range,
                            [&](const char *bytes, qint64 count, qint64) { digests.add(bytes, count); });
    digests.add(window.bytes(), range.length);
    if (!window.isSound())
        throw Error("cannot be read: it has become shorter meanwhile, or its disk fails");
}

Digests digestsOf(const ByteRange &range, const QVector<DigestAlgorithm> &algorithms)
{
    DigestSet digests(algorithms);
    if (!algorithms.isEmpty())
        forEachPiece(range, [&](const char *bytes, qint64 count, qint64) { digests.add(bytes, count); });
    return digests.finish();
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

void addToDigests(const ByteRange &range, DigestSet &digests)
{
    for (qint64 done = 0; done < range.length;) {
        Interrupt::check();
        const qint64 count = std::min(windowSize, range.length - done);
        addWindow({range.fd, range.offset + done, count}, digests);
        done += count;
    }
}

Digests copyAndDigest(const ByteRange &from, int to, qint64 toOffset,
                      const QVector<DigestAlgorithm> &algorithms)
{
    if (algorithms.isEmpty() || from.length < worthAThread) {
        copyRange(from, to, toOffset);
        return digestsOf({to, toOffset, from.length}, algorithms);
    }
    DigestThread digests(to, toOffset, algorithms);
    for (qint64 done = 0; done < from.length; done += copyStep) {
        const qint64 count = std::min(copyStep, from.length - done);
        copyRange({from.fd, from.offset + done, count}, to, toOffset + done);
        // Where the copy shares its blocks nothing of it is in memory yet. Only a hint.
        posix_fadvise(to, toOffset + done, count, POSIX_FADV_WILLNEED);
        digests.add(count);
    }
    return digests.finish();
}

} // namespace FlatPkg
