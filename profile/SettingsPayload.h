// SPDX-License-Identifier: Apache-2.0
#pragma once

#import <Foundation/Foundation.h>

#include <QString>

struct Product;
struct ProfilePayloadInfo;

// Where in a profile the settings of a product are, whichever way a management has wrapped them. Each takes
// whatever object a property list holds.

/// Type of the payload in which a management forces preferences.
QString managedPreferencesType();

/// Identifier of the payload in which we force those of a product. Not that of its settings, by which a
/// reader that knows nothing of managed preferences would take the payload for one with default settings.
QString managedPreferencesIdentifier(const Product &product);

/// The settings of one of the products, with the product.
struct FoundSettings {
    const Product *product = nullptr; ///< null when there are none
    NSArray *layers = nil;            ///< dictionaries, each on top of the one before
};

/// What the first payload with settings of ours holds, of a profile in a file or as the system lists it: one
/// with the identifier of the settings, or else of their type, or one with preferences of their domain. The
/// product `wanted`, which may be null, goes before the other.
FoundSettings findSettings(NSArray *payloads, const Product *wanted);

/// Reads the five members of a profile whose keys start with the prefix.
void readIdentity(ProfilePayloadInfo &info, NSDictionary *profile, NSString *prefix);
