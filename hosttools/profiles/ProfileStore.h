// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosttools/profiles/PropertyList.h"

#include <ctime>
#include <vector>

/// The installed profiles: one property list for each in one folder, PCT_PROFILES_DIR or pct/profiles in
/// the user's data folder. All of it throws FlatPkg::Error and names the file that is concerned.
namespace ProfileStore {

struct InstalledProfile
{
    PropertyList::Node profile;
    timespec installed;
};

/// Oldest first. A link in the folder is refused, and so is a profile that is damaged.
std::vector<InstalledProfile> all();

/// Adds the profile in a file, in place of the one that has the same identifier.
void install(const QByteArray &path);

/// Removes the profile of an identifier; having none is an error.
void remove(const QByteArray &identifier);

} // namespace ProfileStore
