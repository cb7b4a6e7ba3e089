// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

#include <atomic>
#include <thread>

/// Ends a run early and cleanly on SIGINT, SIGTERM and SIGHUP: from then on every child process is
/// ended, so that the work fails at once by itself and takes its private folder away, as after any
/// failure. Work that goes on nevertheless, because it computes, is ended within a second together with the
/// process, and its folders are taken away for it. One object, made in `main` before any child is started.
class Interruption
{
public:
    /// `subject` is what the message names when the process has to be ended in the middle of its work.
    explicit Interruption(const QString &subject);
    ~Interruption();
    Interruption(const Interruption &) = delete;
    Interruption &operator=(const Interruption &) = delete;

    /// Whether such a signal has arrived. Any thread.
    bool happened() const;

    /// True for the first caller: an interruption is told once. Any thread.
    bool isTheFirstToTell();

    /// What is told of it, behind the name of a file or verb.
    static QString text();

    /// Ends the process by the signal that arrived, as its starter expects; returns when there was
    /// none. Call it last, when everything is cleaned up.
    static void endBySignal();

private:
    void watch();
    bool endChildrenUntilFinished() const;
    void endWork();

    QByteArray m_lastWords;
    int m_readEnd = -1;
    std::atomic<bool> m_finished{false};
    std::atomic<bool> m_told{false};
    std::thread m_watcher;
};
