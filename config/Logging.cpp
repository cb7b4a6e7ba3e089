// SPDX-License-Identifier: Apache-2.0
#include "config/Logging.h"

Q_LOGGING_CATEGORY(logConfig, "pct.config")
