// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLoggingCategory>

/// The pages that open the work ("pct.welcome").
Q_DECLARE_LOGGING_CATEGORY(logWelcome)
