// SPDX-License-Identifier: Apache-2.0
#include "package/Logging.h"

Q_LOGGING_CATEGORY(logPackage, "pct.package")
