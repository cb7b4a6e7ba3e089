// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/Problem.h"

#include <QByteArray>
#include <QString>

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
    static bool happened();

    /// What to tell of a problem: that the run was interrupted, when a signal had arrived before this was
    /// asked for the first time. So all that is told of one failure is the same.
    static QString textOf(const Problem &problem);

    /// True for the first caller: an interruption is told once. Any thread.
    static bool isTheFirstToTell();

    /// Ends the process by the signal that arrived, as its starter expects; returns when there was
    /// none. Call it last, when everything is cleaned up.
    static void endBySignal();

private:
    void watch() const;
    void endWork() const;

    QByteArray m_lastWords;
    int m_readEnd = -1;
    std::thread m_watcher;
};
