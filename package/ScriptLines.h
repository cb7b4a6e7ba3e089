// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

// Edits on the lines of an install script, without their terminators. Anchors are compared with white
// space at both ends of line and anchor ignored, otherwise exactly. `error` is optional.

/// Index of the only line equal to the anchor, or -1 with "anchor is not unique: [%1], count=%2" when
/// there is none or more than one.
int findUniqueAnchor(const QStringList &lines, const QString &anchor, QString *error = nullptr);

/// Index of the first line from `from` on that equals the anchor, or -1 with
/// "anchor not found after line %1: [%2]".
int findAnchorAfter(const QStringList &lines, const QString &anchor, int from, QString *error = nullptr);

/// Replaces the lines start to end, both included, by the block; an empty block deletes them. False with
/// "invalid range: start=%1, end=%2" and unchanged lines when there is no such range.
bool replaceLineRange(QStringList &lines, int start, int end, const QStringList &block,
                      QString *error = nullptr);

/// Replaces the only line equal to the anchor; false with findUniqueAnchor's error otherwise.
bool replaceUniqueLine(QStringList &lines, const QString &anchor, const QString &newLine,
                       QString *error = nullptr);

/// Every CR LF pair and every CR left becomes LF.
QString normalizeNewlines(QString text);

/// The lines of a script: line ends normalized, no empty last line for a final line feed.
QStringList scriptLines(const QString &text);

/// The text of a script file: its bytes up to the first NUL as UTF-8. A problem when the path is a link or no
/// regular file, or the file cannot be read or is larger than 16 MiB.
Result<QString> readScript(const QString &path);
