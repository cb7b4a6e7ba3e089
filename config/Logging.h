// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLoggingCategory>

/// The record and the configuration document ("pct.config").
Q_DECLARE_LOGGING_CATEGORY(logConfig)
