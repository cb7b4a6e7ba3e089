// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

class QTextStream;

/// Runs one `pct` command line: `arguments` are the words after the program's name. Returns the exit
/// code. A QCoreApplication must exist; blocks until the work is done.
int runPct(const QStringList &arguments, QTextStream &out, QTextStream &err);
