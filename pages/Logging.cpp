// SPDX-License-Identifier: Apache-2.0
#include "pages/Logging.h"

Q_LOGGING_CATEGORY(logPages, "pct.pages")
