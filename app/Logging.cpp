// SPDX-License-Identifier: Apache-2.0
#include "app/Logging.h"

Q_LOGGING_CATEGORY(logApp, "pct.app")
