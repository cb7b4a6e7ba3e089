// SPDX-License-Identifier: Apache-2.0
#include "core/Logging.h"

Q_LOGGING_CATEGORY(logCore, "pct.core")
