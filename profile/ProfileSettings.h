// SPDX-License-Identifier: Apache-2.0
#pragma once

#import <Foundation/Foundation.h>

#include "profile/ConfigGenerator.h"

struct EditorXmlData;
struct Product;

/// The profile of a product as a property list, with a new UUID for its settings payload. Autoreleased.
NSDictionary *profileDictionary(const EditorXmlData &data, const Product &product);

/// Overlays the record with a settings payload. What the payload does not mention stays; the two ribbon
/// elements are replaced in any case. Values of any type are taken, see FoundationPropertyList.
void fillFromSettings(EditorXmlData &data, NSDictionary *settings, ConfigGenerator::EmptyPolicy emptyPolicy);
