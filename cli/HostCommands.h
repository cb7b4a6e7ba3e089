// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

#include <QStringList>

/// That the system's commands, by name or absolute path, are on this machine.
Result<> haveCommands(const QStringList &commands);
