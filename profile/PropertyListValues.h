// SPDX-License-Identifier: Apache-2.0
#pragma once

#import <Foundation/Foundation.h>

#include <QString>

// Members of a dictionary whose types nobody vouches for. Each takes any object or nil as container; what is
// not there or of another type reads as nil, 0 or empty.

id memberOf(id container, NSString *key);
NSDictionary *dictionaryIn(id container, NSString *key);
NSArray *arrayIn(id container, NSString *key);

/// Foundation's integer value of a string or number, kept within an int.
int integerIn(id container, NSString *key);

/// A string, or a number as text, as it stands.
QString textIn(id container, NSString *key);

/// The same for a value by itself.
QString textOf(id value);
