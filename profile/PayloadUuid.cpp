// SPDX-License-Identifier: Apache-2.0
#include "profile/PayloadUuid.h"

#include <QUuid>

namespace {

QString written(const QUuid &uuid)
{
    return uuid.toString(QUuid::WithoutBraces).toUpper();
}

/// The namespace that RFC 4122 gives to names of domains.
const QUuid domainNames(0x6ba7b810, 0x9dad, 0x11d1, 0x80, 0xb4, 0x00, 0xc0, 0x4f, 0xd4, 0x30, 0xc8);

} // namespace

QString freshUuid()
{
    return written(QUuid::createUuid());
}

QString stableProfileUuid(const QString &identifier)
{
    return written(QUuid::createUuidV5(domainNames, identifier));
}

QString stablePayloadUuid(const QString &profileUuid, const QString &payloadType)
{
    return written(QUuid::createUuidV5(QUuid(profileUuid), payloadType));
}
