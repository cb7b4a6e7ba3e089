// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

#include <optional>

namespace FlatPkg {

/// The SHA-1 of a large file, remembered by the run that has verified it, so that flattening need not hash a
/// payload that nobody has touched. docs/flat-packages.md says why what is remembered cannot be wrong.
///
/// It lies in an extended attribute of the file's folder, because one of the file itself would change the
/// file's ctime, and counts only while device, inode, size, mtime and ctime of the file are what they were
/// then.

/// Files from this size on are worth the attribute.
constexpr qint64 worthRemembering = 1024 * 1024;

/// Called when nothing of the file changes any more, not even its mode.
void rememberDigest(int folder, const QByteArray &name, const QByteArray &sha1);

/// The remembered digest (20 bytes) of an open file in a folder, if it still holds.
std::optional<QByteArray> verifiedDigestOf(int file, int folder, const QByteArray &name);

/// What changes when the bytes of an open file do.
QByteArray fingerprintOf(int file);

} // namespace FlatPkg
