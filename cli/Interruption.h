// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <thread>

/// Ends a run early and cleanly on SIGINT, SIGTERM and SIGHUP: from then on every child process is
/// ended, so that the work fails at once by itself and takes its private folder away, as after any
/// failure. One object, made in `main` before any child is started.
class Interruption
{
public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption &) = delete;
    Interruption &operator=(const Interruption &) = delete;

    /// Whether such a signal has arrived. Any thread.
    static bool happened();

    /// Ends the process by the signal that arrived, as its starter expects; returns when there was
    /// none. Call it last, when everything is cleaned up.
    static void endBySignal();

private:
    void watch();

    int m_readEnd = -1;
    std::thread m_watcher;
};
