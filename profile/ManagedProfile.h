// SPDX-License-Identifier: Apache-2.0
#pragma once

class QString;
struct EditorXmlData;

/// The product's settings as a management has them in force on this machine. For users: the system lists the
/// profiles of the device for root only, but the values lie in the managed preferences for everybody to read.
namespace ManagedProfile {

enum class Outcome {
    Nothing, ///< nothing of the product is managed here, as far as this user sees; the record is as it was
    Filled,
    WithoutIdentity, ///< filled, but which profile the values come from is not known
    CannotTell       ///< something of the product is managed, but not what; the record is as it was
};

/// Fills the record with the managed preferences of this user, or else of the device, and with the identity of
/// the profile that they come from. `problem` gets one line for the last two outcomes, and becomes empty
/// otherwise. Runs /usr/sbin/system_profiler and blocks until it ends.
Outcome read(EditorXmlData &data, bool editor, QString &problem);

} // namespace ManagedProfile
