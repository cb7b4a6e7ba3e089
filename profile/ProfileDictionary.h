// SPDX-License-Identifier: Apache-2.0
#pragma once

#import <Foundation/Foundation.h>

struct EditorXmlData;
struct Product;

/// The profile of a product as a property list, with a new UUID for its settings payload. Autoreleased.
NSDictionary *profileDictionary(const EditorXmlData &data, const Product &product);
