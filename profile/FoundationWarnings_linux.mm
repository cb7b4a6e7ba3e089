// SPDX-License-Identifier: Apache-2.0
#import <Foundation/Foundation.h>

#include "profile/FoundationWarnings.h"

void silenceFoundationWarnings()
{
    [[[NSProcessInfo processInfo] debugSet] addObject:@"NoWarn"];
}
