// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

#include <optional>
#include <sys/stat.h>

namespace FlatPkg {

/// What an archive says about a member apart from its name and its bytes.
struct Attributes
{
    mode_t mode = 0644; ///< permission bits, set-id and sticky bits included
    quint32 uid = 0;
    quint32 gid = 0;
    QByteArray user = QByteArrayLiteral("root");
    QByteArray group = QByteArrayLiteral("wheel");
    std::optional<qint64> modified; ///< seconds since 1970 (UTC)
};

/// How members keep what the file system cannot hold.
///
/// Only root can give files away, a folder that its owner may not enter cannot be worked on, and a
/// program with its set-id bit does not belong into a work folder. So an expanded file or folder gets
/// the nearest mode that can be worked with, and its extended attribute "user.pct.entry" remembers the
/// archive's owner, group, their names and mode beside what was put on the disk. Each of them holds for as
/// long as the disk still says the same. Links can carry no such attribute; theirs lie in their folder.
/// Where the file system knows no extended attributes the archive's modes and times are still on the
/// disk, and a run by root keeps owners as well; without root everything is taken to be root's.
///
/// A file that is replaced or added has no such attribute: it belongs to root and wheel (for root: to
/// whom the disk says), with the mode and time on the disk.

/// Puts all attributes on a finished file or folder; with the mode its owner can lose the right to write.
void applyAttributes(int fd, const Attributes &attributes);

/// Puts attributes on a link in a folder.
void applyLinkAttributes(int folder, const QByteArray &name, const Attributes &attributes);

/// The attributes of a file or folder, as remembered or as the disk has them.
Attributes attributesOf(int fd);
Attributes linkAttributesOf(int folder, const QByteArray &name);

/// Remembers on the folder that a Scripts archive was unpacked to what the package says of the archive.
/// `newest` is the time of the newest thing in the folder.
void rememberScriptsMember(int folder, const Attributes &attributes, qint64 newest);

/// What was remembered, or a readable file of root's when nothing was. The time is the remembered one only
/// while nothing in the folder has another time than then, otherwise that of the newest thing.
Attributes scriptsMemberOf(int folder, qint64 newest);

} // namespace FlatPkg
