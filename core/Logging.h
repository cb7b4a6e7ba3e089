// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLoggingCategory>

/// Child processes and file operations ("pct.core").
Q_DECLARE_LOGGING_CATEGORY(logCore)

/// Shows control characters in all that is logged from now on, whoever handles it. Called once at program
/// start, before any thread.
void showControlCharactersInLog();
