// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

#include <optional>

namespace FlatPkg {

/// The SHA-1 of a large file, remembered in the extended attribute "user.pct.sha1" by the run that
/// has verified it, so that flattening need not hash a payload that nobody has touched. It counts only
/// while size, modification time (in nanoseconds) and inode are what they were then: a copy, a
/// replacement and an edit are hashed again.

/// Files from this size on are worth the attribute.
constexpr qint64 worthRemembering = 1024 * 1024;

/// Called when the file has its final time; writing to it or setting its time forgets the digest.
void rememberDigest(int fd, const QByteArray &sha1);

/// The remembered digest (20 bytes), if it still holds.
std::optional<QByteArray> verifiedDigestOf(int fd);

} // namespace FlatPkg
