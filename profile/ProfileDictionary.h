// SPDX-License-Identifier: Apache-2.0
#pragma once

#import <Foundation/Foundation.h>

#include "profile/ProfileForm.h"

struct EditorXmlData;
struct Product;

// A record as the property lists that are made of it. All autoreleased.

/// The profile of a product, with a new UUID for its payload or one that follows from the profile's.
NSDictionary *profileDictionary(const EditorXmlData &data, const Product &product, const ProfileForm &form);

/// The payload of such a profile by itself, for a management that makes the profile. It has all keys that
/// payloads have in common.
NSDictionary *payloadDictionary(const EditorXmlData &data, const Product &product, const ProfileForm &form);
