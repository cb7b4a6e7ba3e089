// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

#include <QString>
#include <QStringList>

// Makes the vendor's install scripts find the user who is logged in at the console, instead of trusting
// HOME, which is not that user's when a device-management agent runs the installer. Line edits at fixed
// anchors; a script in which an anchor is missing or ambiguous stays exactly as it was.
//
// The scripts are the vendor's and change with its versions. A wrong edit would fail later, on the machines of
// the users, as root, and nobody would look for it in the package. So an edit is made only where whole lines
// that we know stand as often as we know them, and where they do not the build goes on with a warning.
// Patterns that match more would also match in scripts that nobody here has read.

/// Both patches of a file, see patchScript(). On failure `error` (optional) gets the reason; see
/// unpatchedReason.
bool patchPostinstall(const QString &path, QString *error = nullptr);
bool patchPreinstall(const QString &path, QString *error = nullptr);

/// The same edits on lines in memory; the lines are unspecified after a failure.
Result<> patchPostinstallLines(QStringList &lines);
Result<> patchPreinstallLines(QStringList &lines);

using LinesEdit = Result<> (*)(QStringList &lines);

/// Edits a script file in place, all or nothing, keeping its permissions. A link is refused.
Result<> patchScript(const QString &path, LinesEdit edit);

/// Whether the lines are those of a script that was patched before: they hold the block that finds the user
/// at the console, and what it stands in for no longer.
bool isPatchedPostinstall(const QStringList &lines);
bool isPatchedPreinstall(const QStringList &lines);

/// The reason of a failed patch for people. A patch can fail without a text: when the line that
/// everything is inserted before is the first one.
QString unpatchedReason(const QString &error);
