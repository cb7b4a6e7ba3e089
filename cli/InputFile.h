// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/Problem.h"

#include <QString>

// What is said of a file that is to be read, before its reader looks at it. `give` names what is wanted in
// its place: "a configuration document".

/// What a file's beginning says that it is, whatever its name. Unknown stands for all else.
enum class FileKind { Document, Profile, Package, Unknown };
FileKind kindOfFile(const QString &path);

/// Why the file cannot be read: it is missing, a folder, out of reach.
Verdict unreadable(const QString &path, const QString &give);

/// The same, or that the file is of another kind, and then which option takes it.
Verdict wrongFile(const QString &path, FileKind wanted, const QString &give);
