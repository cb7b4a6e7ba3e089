// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

/// Timestamps of RFC 3161.
namespace Timestamp {

/// The token, in DER, by which the service at the URL (http or https) says that these bytes exist now. Waits
/// at most a minute. Throws FlatPkg::Error when the service cannot be reached, refuses, or answers something
/// else.
QByteArray tokenFor(const QByteArray &bytes, const QByteArray &service);

} // namespace Timestamp
