// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/Problem.h"

#include <QStringList>

/// Which of the system's commands, by name or absolute path, is not on this machine.
Verdict missingCommand(const QStringList &commands);
