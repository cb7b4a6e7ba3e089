// SPDX-License-Identifier: Apache-2.0
#import <Foundation/Foundation.h>

#include "profile/CocoaLog.h"

void cocoaLog(NSString *format, ...)
{
    if (!cocoaLogEnabled())
        return;
    va_list values;
    va_start(values, format);
    NSLogv(format, values);
    va_end(values);
}
