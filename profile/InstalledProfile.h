// SPDX-License-Identifier: Apache-2.0
#pragma once

#import <Foundation/Foundation.h>

#include "profile/ConfigGenerator.h"

// Profiles as the system's command lists them; each takes whatever object the list holds.

/// Whether one of the profile's items carries the payload identifier.
bool hasItemOf(id profile, NSString *payloadIdentifier);

/// The identifier of the first profile that has such an item and an identifier, and the UUID of the last one
/// looked at that has such an item.
ConfigGenerator::InstalledIdentity installedIdentity(NSArray *profiles, NSString *payloadIdentifier);
