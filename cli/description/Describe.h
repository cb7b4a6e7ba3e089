// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/Verb.h"

#include <QStringList>

/// Writes a file that describes the verbs. The arguments are what it is (bash, zsh, fish or manual), its
/// template and its path. Returns the exit code; what is wrong goes to standard error.
int describe(const VerbTable &table, const QStringList &arguments);
