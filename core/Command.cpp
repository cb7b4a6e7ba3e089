// SPDX-License-Identifier: Apache-2.0
#include "core/Command.h"

#include "core/HostPaths.h"
#include "core/Logging.h"
#include "core/PrintableText.h"

#include <QProcess>

namespace {

/// Whether all of it could be kept.
bool appendBounded(QByteArray &kept, const QByteArray &more, int limit)
{
    const auto room = limit - kept.size();
    kept += more.left(room);
    return more.size() <= room;
}

void collectOutput(QProcess &process, CommandResult &result)
{
    QObject::connect(&process, &QProcess::readyReadStandardOutput, &process, [&process, &result] {
        if (!appendBounded(result.standardOutput, process.readAllStandardOutput(), result.outputLimit))
            result.truncated = true;
    });
    QObject::connect(&process, &QProcess::readyReadStandardError, &process, [&process, &result] {
        appendBounded(result.standardError, process.readAllStandardError(), Command::mebibyte);
    });
}

CommandResult::Outcome waitForEnd(QProcess &process, int timeoutMilliseconds)
{
    if (!process.waitForStarted(-1))
        return CommandResult::Outcome::FailedToStart;
    if (!process.waitForFinished(timeoutMilliseconds) && process.state() != QProcess::NotRunning) {
        process.kill();
        process.waitForFinished(-1);
        return CommandResult::Outcome::TimedOut;
    }
    return process.exitStatus() == QProcess::NormalExit ? CommandResult::Outcome::Finished
                                                        : CommandResult::Outcome::Crashed;
}

QString lastLine(const QByteArray &output)
{
    const QByteArray text = output.trimmed();
    return printableText(QString::fromUtf8(text.mid(text.lastIndexOf('\n') + 1)));
}

bool endsWith(const QStringList &words, const QStringList &tail)
{
    return words.size() > tail.size() && words.mid(words.size() - tail.size()) == tail;
}

} // namespace

bool CommandResult::succeeded() const
{
    return outcome == Outcome::Finished && exitCode == 0;
}

QString CommandResult::problem() const
{
    const QString said = lastLine(standardError.trimmed().isEmpty() ? standardOutput : standardError);
    switch (outcome) {
    case Outcome::FailedToStart:
        return QStringLiteral("%1 could not be started").arg(program);
    case Outcome::Crashed:
        return QStringLiteral("%1 was ended by a signal").arg(program);
    case Outcome::TimedOut:
        return QStringLiteral("%1 took too long and was stopped").arg(program);
    case Outcome::Refused:
        return QStringLiteral("%1 was not started: a path holds a character that breaks its quoting")
            .arg(program);
    case Outcome::Finished:
        break;
    }
    if (exitCode == 0)
        return {};
    const QString failed = QStringLiteral("%1 ended with exit code %2").arg(program).arg(exitCode);
    return said.isEmpty() ? failed : failed + QStringLiteral(": ") + said;
}

QString CommandResult::outputProblem() const
{
    if (!succeeded() || !truncated)
        return problem();
    return QStringLiteral("%1 printed more than %2 MiB").arg(program).arg(outputLimit / Command::mebibyte);
}

CommandResult Command::run(const QString &program, const QStringList &arguments, int timeoutMilliseconds,
                           int outputLimit)
{
    CommandResult result;
    result.program = program;
    result.outputLimit = outputLimit;
    QProcess process;
    collectOutput(process, result);
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(HostPaths::command(program), arguments, QIODevice::ReadOnly);
    result.outcome = waitForEnd(process, timeoutMilliseconds);
    if (result.outcome == CommandResult::Outcome::Finished)
        result.exitCode = process.exitCode();
    if (!result.succeeded())
        qCDebug(logCore).noquote() << result.problem();
    return result;
}

CommandResult Command::runLine(const QString &commandLine, const QStringList &trailingPaths)
{
    QStringList words = QProcess::splitCommand(commandLine);
    CommandResult refused;
    refused.outcome = CommandResult::Outcome::Refused;
    refused.program = words.isEmpty() ? QString() : words.first();
    if (!endsWith(words, trailingPaths)) {
        qCDebug(logCore).noquote() << refused.problem();
        return refused;
    }
    const QString program = words.takeFirst();
    return run(program, words);
}
