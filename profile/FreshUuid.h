// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QUuid>

/// A new random UUID (RFC 4122 version 4), upper case, 8-4-4-4-12. Foundation's own carries no version on
/// every system.
inline QString freshUuid()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
}
