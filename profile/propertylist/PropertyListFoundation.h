// SPDX-License-Identifier: Apache-2.0
#pragma once

#import <Foundation/Foundation.h>

// Foundation's property-list calls with their exceptions turned into errors. In C linkage and plain
// Objective-C, because with GCC an Objective-C exception that meets a frame of Objective-C++ ends the
// process.

#ifdef __cplusplus
extern "C" {
#endif

/// The XML form of a property list; nil with the error set when it holds what XML cannot carry.
NSData *xmlFromPropertyList(id propertyList, NSError **error);

/// An error of this program.
NSError *profileError(NSString *description);

#ifdef __cplusplus
}
#endif
