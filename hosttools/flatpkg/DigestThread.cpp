// SPDX-License-Identifier: Apache-2.0
#include "hosttools/flatpkg/DigestThread.h"

#include "hosttools/flatpkg/ByteRange.h"

#include <algorithm>

namespace FlatPkg {

DigestThread::DigestThread(int fd, qint64 offset, const QVector<DigestAlgorithm> &algorithms)
    : m_fd(fd)
    , m_offset(offset)
    , m_hashing(std::async(std::launch::async, [=] { return hashAll(DigestSet(algorithms)); }))
{
}

DigestThread::~DigestThread()
{
    end(true);
}

void DigestThread::add(qint64 count)
{
    {
        const std::lock_guard lock(m_mutex);
        m_written += count;
    }
    m_changed.notify_one();
}

Digests DigestThread::finish()
{
    end(false);
    return m_hashing.get();
}

Digests DigestThread::hashAll(DigestSet digests)
{
    qint64 hashed = 0;
    while (const qint64 count = waitForMore(hashed)) {
        addToDigests({m_fd, m_offset + hashed, count}, digests);
        hashed += count;
    }
    return digests.finish();
}

/// How much can be hashed in one go; 0 at the end.
qint64 DigestThread::waitForMore(qint64 hashed)
{
    constexpr qint64 largestPart = 8 * 1024 * 1024; // whoever gives up waits for no more
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [&] { return m_ended || hashed < m_written; });
    return m_abandoned ? 0 : std::min(largestPart, m_written - hashed);
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
