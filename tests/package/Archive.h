// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

/// Archives as bsdtar sees them, so that no code of ours judges its own work.
namespace Archive {

/// Unpacks an archive into a folder, which is made.
void unpack(const QString &archive, const QString &folder);

/// Mode, owner, size, time and name of each member, sorted, without those whose line ends with one of
/// `changed` and without the number of links, which archives count differently.
QStringList listing(const QString &archive, const QStringList &changed);

/// The files below a folder, hidden ones too, sorted, relative to it.
QStringList filesBelow(const QString &folder);

} // namespace Archive
