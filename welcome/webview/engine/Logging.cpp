// SPDX-License-Identifier: Apache-2.0
#include "welcome/webview/engine/Logging.h"

Q_LOGGING_CATEGORY(logWebEngine, "pct.welcome")
