// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/Verb.h"

#include <QStringList>

/// Runs one `pct` command line: `arguments` are the words after the program's name. Returns the exit
/// code. A QCoreApplication must exist; blocks until the work is done.
int runPct(const VerbTable &table, const QStringList &arguments, Console &console);
