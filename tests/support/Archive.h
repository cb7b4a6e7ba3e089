// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// Archives as programs of others see them, so that no code of ours judges its own work: packages as xar does
/// on a Mac and bsdtar elsewhere, because a Mac's bsdtar knows no xar; all others as bsdtar does.
namespace Archive {

/// Unpacks an archive into a folder, which is made.
void unpack(const QString &archive, const QString &folder);

/// The names of the members, a line each.
QByteArray names(const QString &archive);

/// Mode, owner, size, time and name of each member, sorted, without those whose line ends with one of
/// `changed` and without the number of links, which archives count differently.
QStringList listing(const QString &archive, const QStringList &changed);

/// The files below a folder, hidden ones too, sorted, relative to it.
QStringList filesBelow(const QString &folder);

} // namespace Archive
