// SPDX-License-Identifier: Apache-2.0
#pragma once

#import <Foundation/Foundation.h>

/// The XML text of a property list, in which every character stands for itself. nil, with the error set, when
/// it holds what XML cannot carry. The only way in which property lists are written.
NSString *writePropertyList(NSDictionary *list, NSError **error);
