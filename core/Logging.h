// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLoggingCategory>

/// Child processes and file operations ("pct.core").
Q_DECLARE_LOGGING_CATEGORY(logCore)
