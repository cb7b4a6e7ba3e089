// SPDX-License-Identifier: Apache-2.0
#pragma once

#import <Foundation/Foundation.h>

#include <QString>

// Profiles as the system's command lists them; each takes whatever object the list holds.

/// Whether one of the profile's items carries the payload identifier.
bool hasItemOf(id profile, NSString *payloadIdentifier);

/// The identifier of the first installed profile that has such an item and an identifier; empty when there
/// is none. `uuid` gets the UUID of every profile looked at that has such an item, so in the end the last
/// one's.
QString installedIdentifier(NSArray *profiles, NSString *payloadIdentifier, QString &uuid);
