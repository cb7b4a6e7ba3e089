// SPDX-License-Identifier: Apache-2.0
#include "welcome/Logging.h"

Q_LOGGING_CATEGORY(logWelcome, "pct.welcome")
