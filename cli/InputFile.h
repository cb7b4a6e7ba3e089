// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

#include <QString>

// What is said of a file before it is read or made. `give` names what is wanted in its place: "a
// configuration document".

/// What a file's beginning says that it is, whatever its name. Unknown stands for all else.
/// Json can be settings where a document is wanted.
enum class FileKind { Document, Profile, Package, Json, Unknown };
FileKind kindOfFile(const QString &path);

/// That the file can be read: it is there, no folder, within reach.
Result<> checkReadable(const QString &path, const QString &give);

/// The same, and that it is of no other kind; otherwise the problem says which option takes it.
Result<> checkFile(const QString &path, FileKind wanted, const QString &give);

/// That a file can be made at the path. An existing one may be replaced only when `force` is set.
Result<> checkWritable(const QString &path, bool force);

/// What to do about a file that exists already, as the end of a message.
QString forceAdvice();
