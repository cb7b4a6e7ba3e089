// SPDX-License-Identifier: Apache-2.0
#include "hosttools/flatpkg/DigestThread.h"

#include "hosttools/flatpkg/Files.h"
#include "hosttools/flatpkg/Interrupt.h"

#include <algorithm>

namespace FlatPkg {

namespace {

// With all buffers in use the processor's caches still hold them.
constexpr qint64 pieceSize = 512 * 1024;

} // namespace

DigestThread::DigestThread(const QVector<DigestAlgorithm> &algorithms)
    : m_digests(algorithms)
{
    for (Piece &piece : m_pieces)
        piece.bytes.resize(pieceSize);
    m_hashing = std::async(std::launch::async, [this] { return hashAll(); });
}

DigestThread::~DigestThread()
{
    end(true);
}

void DigestThread::add(const ByteRange &range)
{
    for (qint64 done = 0; done < range.length;) {
        Interrupt::check();
        const qint64 count = std::min(pieceSize, range.length - done);
        readExactly(range.fd, nextFree().bytes.data(), count, range.offset + done);
        hand(count);
        done += count;
    }
}

Digests DigestThread::finish()
{
    end(false);
    return m_hashing.get();
}

DigestThread::Piece &DigestThread::nextFree()
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_filled - m_hashed < m_pieces.size(); });
    return m_pieces[m_filled % m_pieces.size()];
}

void DigestThread::hand(qint64 count)
{
    {
        const std::lock_guard lock(m_mutex);
        m_pieces[m_filled % m_pieces.size()].count = count;
        ++m_filled;
    }
    m_changed.notify_one();
}

Digests DigestThread::hashAll()
{
    while (waitForPiece()) {
        const Piece &piece = m_pieces[m_hashed % m_pieces.size()];
        m_digests.add(piece.bytes.data(), piece.count);
        {
            const std::lock_guard lock(m_mutex);
            ++m_hashed;
        }
        m_changed.notify_one();
    }
    return m_digests.finish();
}

bool DigestThread::waitForPiece()
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_ended || m_hashed < m_filled; });
    return !m_abandoned && m_hashed < m_filled;
}

void DigestThread::end(bool abandon)
{
    {
        const std::lock_guard lock(m_mutex);
        m_ended = true;
        m_abandoned = abandon;
    }
    m_changed.notify_one();
}

} // namespace FlatPkg
