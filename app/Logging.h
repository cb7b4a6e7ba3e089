// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLoggingCategory>

/// The windows and their flows ("pct.app").
Q_DECLARE_LOGGING_CATEGORY(logApp)
