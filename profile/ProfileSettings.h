// SPDX-License-Identifier: Apache-2.0
#pragma once

#import <Foundation/Foundation.h>

#include "profile/ConfigGenerator.h"

struct EditorXmlData;

/// The settings as a property list, without what makes a payload of them. Autoreleased.
NSDictionary *settingsDictionary(const EditorXmlData &data);

/// Overlays the record with a settings payload. What the payload does not mention stays; the two ribbon
/// elements are replaced in any case. Values of any type are taken, see FoundationPropertyList.
void fillFromSettings(EditorXmlData &data, NSDictionary *settings, ConfigGenerator::EmptyPolicy emptyPolicy);
