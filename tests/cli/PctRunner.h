// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// How a `pct` process ended and what it wrote.
struct PctResult
{
    QProcess::ExitStatus status = QProcess::CrashExit;
    int exitCode = -1; ///< the signal's number after a CrashExit
    QByteArray out;
    QByteArray err;

    QJsonObject json() const;
    /// The lines on standard error, without their line feeds.
    QStringList messages() const;
    /// Exit code 1, nothing on standard output and one line of the usual form on standard error.
    bool isOneLineRefusal() const;
};

/// A folder of its own for one test: files in "files", the temporary folder of `pct` in "tmp", and the
/// commands that it starts in "tools", which are the real ones until a test puts its own in their place.
class PctRunner
{
public:
    PctRunner();

    /// Path of a file in the folder "files".
    QString file(const QString &name) const;

    /// A copy there of a sample package, "Pelix PDF Editor.pkg" or "Pelix PDF Reader.pkg".
    QString samplePackage(bool editor, const QString &name = QString()) const;

    /// A sample package whose scripts were edited with a sed expression before it was made.
    QString alteredPackage(bool editor, const QString &script, const QString &sedExpression) const;

    /// A sample package in whose scripts' folder a shell command was run before it was made.
    QString changedPackage(bool editor, const QString &command) const;

    /// A document there; `body` is what goes between the tags of the root element.
    QString document(const QByteArray &root, const QByteArray &body, const QString &name = QString()) const;

    /// Replaces a command by a shell script; $real is the command that it stands for.
    void replaceTool(const QString &name, const QByteArray &script) const;
    /// Puts a program in the command's place that no system can start.
    void breakTool(const QString &name) const;
    void removeTool(const QString &name) const;
    /// The command itself again, after replaceTool.
    void restoreTool(const QString &name) const;

    /// Calls of the system, separated by spaces, that `pct` finds missing, e.g. "renameat2 linkat"; not on a Mac.
    void withoutCalls(const QString &calls);
    /// A call that never returns and keeps the processor busy: "fsync"; not on a Mac.
    void withEndlessCall(const QString &call);
    /// Whether it has been called.
    bool isBusy() const;

    void setEnvironment(const QString &name, const QString &value);
    /// What `pct` is started with.
    const QProcessEnvironment &environment() const;

    /// Runs `pct` to its end.
    PctResult run(const QStringList &arguments) const;

    /// Starts `pct` and returns at once.
    void start(QProcess &process, const QStringList &arguments) const;
    static PctResult waitFor(QProcess &process);

    /// What lies in the temporary folder.
    QStringList temporaryLeftovers() const;
    /// The names in the folder "files", hidden ones included.
    QStringList files() const;

private:
    void linkTool(const QString &name) const;
    void interpose(const char *variable, const QString &calls);

    QTemporaryDir m_folder;
    QProcessEnvironment m_environment;
};
