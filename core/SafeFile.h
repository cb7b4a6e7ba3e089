// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/OutputFile.h"
#include "core/Result.h"

#include <QByteArray>
#include <QString>

/// File operations that never go through a link and never leave a good file half replaced.
/// All may be called from any thread. Problems are about the path that is to be read or made.
namespace SafeFile {

enum class Kind { Missing, File, Folder, Link, Other };

/// What lies at a path itself: a link is reported as a link, wherever it leads.
Kind kindOf(const QString &path);

/// True when both paths lead to the same existing file or folder (same device and inode).
bool sameFile(const QString &first, const QString &second);

/// Whether to wait until the bytes are on the disk.
using Lasting = OutputFile::Lasting;

/// Copies a regular file, or one that is compiled in, with its permissions to a path where nothing may exist
/// yet, not even a dangling link. After a failure nothing is there.
Result<> copyNew(const QString &from, const QString &to, Lasting lasting = Lasting::Yes);

/// All that a file holds; what could be read before a failure is never taken for the whole.
Result<QByteArray> readContents(const QString &path);

/// Makes an OutputFile of the bytes, also over a regular file, which keeps its permissions. Refuses when a
/// link or anything else lies there. After a failure all is as it was.
Result<> replaceContents(const QString &path, const QByteArray &bytes, Lasting lasting = Lasting::Yes);

} // namespace SafeFile
