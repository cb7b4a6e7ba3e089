// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/EditorXmlData.h"
#include "core/Result.h"
#include "profile/ManagedPreferences.h"
#include "profile/ProfileReport.h"

#include <QList>
#include <QString>

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

/// The payloads with settings of the product that the system tells everybody of, whichever way a management
/// has wrapped them. Runs the same command.
Result<QList<ProfileReport::Payload>> reported(const Product &product);

struct Values
{
    EditorXmlData settings; ///< over the defaults
    QString payloadUuid;    ///< of the payload that they come from; empty when the system does not say
};

/// What a file of managed preferences holds; the problem names the file in its text.
Result<Values> valuesIn(const ManagedPreferences::File &file);

} // namespace ManagedProfile
