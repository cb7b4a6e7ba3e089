// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QVector>

/// The rules for names in an archive, which is hostile until proven otherwise. All throw Error.
namespace FlatPkg {

/// Deeper nesting than this is refused, in archives as in folders.
constexpr int deepestNesting = 64;

/// Refuses a name that is no plain file name: empty, ".", "..", with a slash or a NUL, or too long.
void requireFileName(const QByteArray &name);

/// The components of a relative path, "." components dropped; each of them passes requireFileName().
/// An absolute path and one of more than `deepestNesting` components are refused.
QVector<QByteArray> componentsOf(const QByteArray &path);

/// Refuses the target of a link that leads out of the tree. `depth` is the number of folders between
/// the root and the link. Only leading ".." components are taken: after a name they could go through
/// another link, and then counting components would prove nothing.
void requireTargetInside(const QByteArray &target, int depth);

} // namespace FlatPkg
