// SPDX-License-Identifier: Apache-2.0
#include "profile/Logging.h"

#include "profile/CocoaLog.h"

Q_LOGGING_CATEGORY(logProfile, "pct.profile")

bool cocoaLogEnabled()
{
    return logProfile().isDebugEnabled();
}
