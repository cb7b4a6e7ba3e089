// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLoggingCategory>

/// Work on installer packages ("pct.package").
Q_DECLARE_LOGGING_CATEGORY(logPackage)
