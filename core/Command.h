// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// What became of a child process.
struct CommandResult
{
    enum class Outcome {
        Finished,      ///< ended by itself; exitCode says how
        FailedToStart, ///< not found or not executable
        Crashed,       ///< ended by a signal, a kill from outside included
        TimedOut,      ///< was killed because it took longer than allowed
        Refused        ///< never started, because a path would have changed the command's meaning
    };

    Outcome outcome = Outcome::FailedToStart;
    int exitCode = -1;         ///< meaningful for Finished only
    QByteArray standardOutput; ///< as much from its start as was to be kept
    QByteArray standardError;  ///< the first mebibyte
    bool truncated = false;    ///< standard output had more
    int outputLimit = 0;       ///< bytes of standard output that were to be kept
    QString program;

    /// Finished with exit code 0.
    bool succeeded() const;

    /// One line for a message: what went wrong, with the last line that the program said, or empty
    /// when it succeeded.
    QString problem() const;

    /// The same for a caller who needs all of standard output: cut off output is a problem, too.
    QString outputProblem() const;
};

/// The only way in which the tool starts programs. Each call blocks its thread until the program has
/// ended, gives it no standard input and may be made from any thread.
///
/// One way, because whatever starts programs also waits for them, and two such libraries in one process take
/// each other's children: with a second one in another thread, 4 of 200 exit codes were wrong on Qt 5.15.
/// No shell, because a path from a user is data and a shell reads it as a program.
namespace Command {

constexpr int mebibyte = 1024 * 1024;

/// Runs a program with an argument vector; no shell is involved. A name without a slash is looked up
/// in PATH, an absolute path through HostPaths. A timeout below zero waits without a limit. Of standard
/// output `outputLimit` bytes are kept.
CommandResult run(const QString &program, const QStringList &arguments, int timeoutMilliseconds = -1,
                  int outputLimit = mebibyte);

/// Runs a command given as one string, split by Qt's rules. The string must end with exactly the given
/// paths; a path whose characters break out of their quotes makes the command be Refused, unstarted.
CommandResult runLine(const QString &commandLine, const QStringList &trailingPaths);

} // namespace Command
