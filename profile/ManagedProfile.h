// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

struct EditorXmlData;
struct Product;

/// The product's settings as a management has them in force on this machine. For users: the system lists the
/// profiles of the device for root only, but the values lie in the managed preferences for everybody to read.
namespace ManagedProfile {

struct Reading
{
    bool isFilled = false; ///< false when nothing of the product is managed here, as far as this user sees
    Result<> identity;     ///< whether the record has the identity of the profile that the values come from
};

/// Fills the record with the managed preferences of this user, or else of the device, and with the identity
/// of the profile that they come from. A problem, with the record as it was, when something of the product is
/// managed, but it cannot be told what. Runs /usr/sbin/system_profiler and blocks until it ends.
Result<Reading> read(EditorXmlData &data, const Product &product);

} // namespace ManagedProfile
