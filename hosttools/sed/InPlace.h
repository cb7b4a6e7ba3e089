// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

/// The system's own sed, and the form of macOS on top of it. All functions throw FlatPkg::Error.
namespace InPlace {

/// The path of the first `sed` in PATH that is not this program.
QByteArray systemSed();

/// Edits a file with the script: the system's sed writes a new file beside it, which replaces the old one
/// and has its mode and owner. A link or anything else but a file is refused. When sed fails the file
/// stays as it was, and sed's message is on standard error.
void edit(const QByteArray &sed, const QByteArray &script, const QByteArray &path);

} // namespace InPlace
