// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class QByteArray;

/// File operations that never go through a link and never leave a good file half replaced.
/// All may be called from any thread; `error` is optional and receives one line without the path.
namespace SafeFile {

enum class Kind { Missing, File, Folder, Link, Other };

/// What lies at a path itself: a link is reported as a link, wherever it leads.
Kind kindOf(const QString &path);

/// True when both paths lead to the same existing file or folder (same device and inode).
bool sameFile(const QString &first, const QString &second);

/// Whether to wait until the bytes are on the disk; what is needed by this run only can do without.
enum class Lasting { Yes, No };

/// Copies a regular file, or one that is compiled in, with its permissions to a path where nothing may exist
/// yet, not even a dangling link. After a failure nothing is there.
bool copyNew(const QString &from, const QString &to, QString *error = nullptr,
             Lasting lasting = Lasting::Yes);

/// All that a file holds; what could be read before a failure is never taken for the whole.
bool readContents(const QString &path, QByteArray &bytes, QString *error = nullptr);

/// Writes the bytes beside the path and moves them into place; an existing file keeps its permissions.
/// Refuses when a link or anything but a regular file lies there. After a failure all is as it was.
bool replaceContents(const QString &path, const QByteArray &bytes, QString *error = nullptr,
                     Lasting lasting = Lasting::Yes);

} // namespace SafeFile
