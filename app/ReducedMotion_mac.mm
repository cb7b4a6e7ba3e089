// SPDX-License-Identifier: Apache-2.0
#include "app/ReducedMotion.h"

#import <AppKit/AppKit.h>

bool prefersReducedMotion()
{
    // By its name, because not every AppKit that checks this source declares it.
    NSNumber *wish = [[NSWorkspace sharedWorkspace] valueForKey:@"accessibilityDisplayShouldReduceMotion"];
    return [wish boolValue];
}
