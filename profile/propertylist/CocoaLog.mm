// SPDX-License-Identifier: Apache-2.0
#import <Foundation/Foundation.h>

#include "profile/propertylist/CocoaLog.h"

#include "core/PrintableText.h"
#include "profile/propertylist/FoundationText.h"

void cocoaLog(NSString *format, ...)
{
    if (!cocoaLogEnabled())
        return;
    va_list values;
    va_start(values, format);
    NSString *text = [[NSString alloc] initWithFormat:format arguments:values];
    va_end(values);
    NSLog(@"%@", toNSString(visibleLines(toQString(text))));
    [text release];
}
