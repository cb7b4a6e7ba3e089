// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosttools/flatpkg/Digest.h"

#include <condition_variable>
#include <future>
#include <mutex>

namespace FlatPkg {

/// Hashes in a thread of its own what the caller writes to a file, a little behind it. So the digests are
/// those of what has arrived.
class DigestThread
{
public:
    /// The bytes are hashed from `offset` on.
    DigestThread(int fd, qint64 offset, const QVector<DigestAlgorithm> &algorithms);
    /// Gives up what has not been hashed yet.
    ~DigestThread();
    DigestThread(const DigestThread &) = delete;
    DigestThread &operator=(const DigestThread &) = delete;

    /// So many more bytes have been written.
    void add(qint64 count);

    /// Waits for the digests of everything added. Throws Error when it cannot be read. Called once.
    Digests finish();

private:
    Digests hashAll(DigestSet digests);
    qint64 waitForMore(qint64 hashed);
    void end(bool abandon);

    int m_fd;
    qint64 m_offset;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    qint64 m_written = 0;
    bool m_ended = false;
    bool m_abandoned = false;
    std::future<Digests> m_hashing;
};

} // namespace FlatPkg
