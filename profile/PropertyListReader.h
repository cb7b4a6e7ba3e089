// SPDX-License-Identifier: Apache-2.0
#pragma once

#import <Foundation/Foundation.h>

class QByteArray;

/// The dictionary that a property list of any format holds, read within PropertyListInput's limits. nil,
/// with the error set, when there is none. The only way in which property lists are read.
NSDictionary *readPropertyList(const QByteArray &bytes, NSError **error);

/// The same for text. A character that UTF-8 cannot encode makes it fail.
NSDictionary *readPropertyListText(NSString *text, NSError **error);
