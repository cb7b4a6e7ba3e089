// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QVector>

/// What `pkgutil`, `xar` and `ditto` do. All functions throw Error.
namespace FlatPkg {

/// Unpacks a flat package into a folder that must not exist yet. Every checksum is verified. `Payload` and
/// `Bom` stay files, the `Scripts` archive of every component becomes a folder; a signature is dropped.
/// The folder appears when it is complete, and not at all after a failure.
void expandPackage(const QByteArray &package, const QByteArray &folder);

/// Makes a flat package of such a folder, with the `Scripts` folder of every component packed. It appears,
/// or replaces a regular file, when it is complete; after a failure all is as before.
void flattenFolder(const QByteArray &folder, const QByteArray &package);

/// Unpacks members of a xar archive, all of them when none is named, into an existing folder; `Scripts`
/// stay archives and other members are not even read. A folder stands for all that is in it.
void extractMembers(const QByteArray &archive, const QByteArray &folder, const QVector<QByteArray> &members);

/// Unpacks a cpio archive, gzip'd or not, into a folder, which is made when it is missing.
void unpackArchive(const QByteArray &archive, const QByteArray &folder);

} // namespace FlatPkg
