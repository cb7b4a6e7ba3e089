// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

/// A command of the packaging that was run to its end.
struct CommandRun
{
    int exitCode = -1; ///< -1 when it could not be started or crashed
    QString output;
    QString errors;
};

CommandRun runCommand(const QString &program, const QStringList &arguments,
                      const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment());

/// The environment of this program with the Mac's commands that tests/packaging/bundle/commands plays, which
/// note their calls in a file, and without an identity to sign with.
QProcessEnvironment playedMac(const QString &logPath);

/// A file of the project.
QString projectFile(const char *path);
