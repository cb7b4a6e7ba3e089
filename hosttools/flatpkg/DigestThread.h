// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosttools/flatpkg/ByteRange.h"

#include <array>
#include <condition_variable>
#include <future>
#include <mutex>
#include <vector>

namespace FlatPkg {

/// Hashes in a thread of its own. The caller's thread reads, so that the other does nothing but hash,
/// which takes longest; both wait for each other asleep, over a few buffers.
class DigestThread
{
public:
    explicit DigestThread(const QVector<DigestAlgorithm> &algorithms);
    /// Gives up what has not been hashed yet.
    ~DigestThread();
    DigestThread(const DigestThread &) = delete;
    DigestThread &operator=(const DigestThread &) = delete;

    /// Reads the range and returns when the last of it waits to be hashed. Throws Error.
    void add(const ByteRange &range);

    /// Waits for the digests of everything added. Called once.
    Digests finish();

private:
    struct Piece
    {
        std::vector<char> bytes;
        qint64 count = 0;
    };

    Piece &nextFree();
    void hand(qint64 count);
    Digests hashAll();
    bool waitForPiece();
    void end(bool abandon);

    std::array<Piece, 8> m_pieces;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    size_t m_filled = 0; ///< pieces read so far
    size_t m_hashed = 0; ///< pieces hashed so far
    bool m_ended = false;
    bool m_abandoned = false;
    DigestSet m_digests;
    std::future<Digests> m_hashing;
};

} // namespace FlatPkg
