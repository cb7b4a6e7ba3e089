// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLoggingCategory>

/// What the web engine's module says, under the name of the pages that it belongs to ("pct.welcome").
Q_DECLARE_LOGGING_CATEGORY(logWebEngine)
