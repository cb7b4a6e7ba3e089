// SPDX-License-Identifier: Apache-2.0
#pragma once

#import <Foundation/Foundation.h>

class QString;

/// A copy of a property list in which every text, keys included, went through the function, which must keep
/// different texts different. Autoreleased; nil gives nil.
NSDictionary *changedTexts(NSDictionary *list, QString (*change)(const QString &text));
