// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosttools/profiles/PropertyList.h"

/// Configuration profiles as files hold them and as the system shows them.
namespace ConfigurationProfile {

/// Reads a profile: XML, binary, or either of them in a signed message whose signature is good. Throws
/// FlatPkg::Error for what is damaged and for a dictionary that is not a profile.
PropertyList::Node read(const QByteArray &bytes);

QByteArray identifier(plist_t profile);

/// "_computerlevel" for a profile of the whole machine, otherwise the name of the user.
QByteArray level(plist_t profile);

/// The name under which the current user's profiles are listed.
QByteArray userName();

/// The form that `profiles show` prints; `installDate` is a text.
PropertyList::Node shown(plist_t profile, const QByteArray &installDate);

} // namespace ConfigurationProfile
