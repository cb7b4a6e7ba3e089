// SPDX-License-Identifier: Apache-2.0
#include "profile/propertylist/CocoaLog.h"

#include "core/Logging.h"

bool cocoaLogEnabled()
{
    return logProfile().isDebugEnabled();
}
