// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLoggingCategory>

/// The pages of the main window ("pct.pages").
Q_DECLARE_LOGGING_CATEGORY(logPages)
