// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QVector>

#include <functional>

/// What the small programs over this library have in common.
namespace FlatPkg {

/// The arguments without the program's name.
QVector<QByteArray> argumentsOf(int argc, char **argv);

/// Runs the work of a command. An Error becomes one line on standard error, "tool: message", and the exit
/// code 1. A signal to stop is such an error, so that nothing half made remains.
int runTool(const char *tool, const std::function<void()> &work);

/// Says on standard error how the command is used; gives the exit code 2.
int wrongUsage(const char *tool, const char *usage);

/// Writes a line to standard output, with control characters made visible.
void printLine(const QByteArray &line);

} // namespace FlatPkg
