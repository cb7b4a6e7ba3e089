// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLoggingCategory>

/// Configuration profiles ("pct.profile"). Debug output of the Cocoa layer follows this category, too.
Q_DECLARE_LOGGING_CATEGORY(logProfile)
