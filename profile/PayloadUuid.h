// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// UUIDs by which systems tell profiles and what is in them apart: upper case, 8-4-4-4-12. Any thread.

/// A new random one (RFC 4122 version 4). Foundation's own carries no version on every system.
QString freshUuid();

/// The one that an identifier of a profile always has: version 5 of the DNS namespace and the identifier.
QString stableProfileUuid(const QString &identifier);

/// The one that the payload of a type has in a profile of this UUID: version 5 of the two.
QString stablePayloadUuid(const QString &profileUuid, const QString &payloadType);
