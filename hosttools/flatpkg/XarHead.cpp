// SPDX-License-Identifier: Apache-2.0
#include "hosttools/flatpkg/XarHead.h"

#include "hosttools/base/Error.h"
#include "hosttools/flatpkg/Digest.h"
#include "hosttools/flatpkg/VerifiedDigest.h"

#include <algorithm>
#include <QtEndian>
#include <zlib.h>

namespace FlatPkg {

namespace {

constexpr int headerSize = 28;
constexpr quint32 sha1Number = 1;

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

template <typename Integer> QByteArray bigEndian(Integer value)
{
    QByteArray bytes(sizeof value, Qt::Uninitialized);
    qToBigEndian(value, bytes.data());
    return bytes;
}

} // namespace

XarHead xarHead(const QByteArray &tocText)
{
    const QByteArray toc = stored(tocText);
    const QByteArray header = "xar!" + bigEndian<quint16>(headerSize) + bigEndian<quint16>(1) +
                              bigEndian<quint64>(static_cast<quint64>(toc.size())) +
                              bigEndian<quint64>(static_cast<quint64>(tocText.size())) +
                              bigEndian(sha1Number);
    return {header + toc, digestOf(DigestAlgorithm::Sha1, toc)};
}

/// Blank lines can begin another stored block, which takes a few bytes itself: hence several tries, and a
/// place farther behind when the one before cannot be met.
int blankLinesFor(const QByteArray &tocText, const HeapAlignment &alignment)
{
    qint64 padding = 0;
    const qint64 unit = alignment.unit;
    const auto place = [&] {
        const QByteArray text = tocText + QByteArray(static_cast<int>(padding), '\n');
        return headerSize + stored(text).size() + alignment.distance;
    };
    const qint64 first = (place() - alignment.remainder + unit - 1) / unit * unit + alignment.remainder;
    for (int tries = 0; tries < 8; ++tries) {
        const qint64 wanted = first + tries / 4 * unit;
        padding = std::max<qint64>(0, padding + wanted - place());
        if (place() == wanted)
            break;
    }
    return static_cast<int>(padding);
}

/// The kernel shares pages. It copies in pieces of 64 KiB, and each of them is one in memory only where it
/// begins at a multiple of that, which a small member is not worth.
qint64 sharingUnitFor(qint64 size)
{
    return size < worthRemembering ? 4096 : 64 * 1024;
}

} // namespace FlatPkg
