// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

// Edits on the lines of an install script, without their terminators. Anchors are compared with white
// space at both ends of line and anchor ignored, otherwise exactly: indentation changes with the blocks around
// a line, which say nothing about its meaning.

/// Index of the only line equal to the anchor, or "anchor is not unique: [%1], count=%2" when there is none
/// or more than one.
Result<int> uniqueAnchor(const QStringList &lines, const QString &anchor);

/// Index of the first line from `from` on that equals the anchor, or "anchor not found after line %1: [%2]".
Result<int> anchorAfter(const QStringList &lines, const QString &anchor, int from);

/// Replaces the lines start to end, both included, by the block; an empty block deletes them. Refused with
/// "invalid range: start=%1, end=%2" and unchanged lines when there is no such range.
Result<> replaceRange(QStringList &lines, int start, int end, const QStringList &block);

/// Replaces the only line equal to the anchor; refused as by uniqueAnchor().
Result<> replaceUnique(QStringList &lines, const QString &anchor, const QString &newLine);

// The same with the reason in `error` (optional), and with -1 for no index.
int findUniqueAnchor(const QStringList &lines, const QString &anchor, QString *error = nullptr);
int findAnchorAfter(const QStringList &lines, const QString &anchor, int from, QString *error = nullptr);
bool replaceLineRange(QStringList &lines, int start, int end, const QStringList &block,
                      QString *error = nullptr);
bool replaceUniqueLine(QStringList &lines, const QString &anchor, const QString &newLine,
                       QString *error = nullptr);

/// Success; otherwise the reason is in `error` (optional), which stays as it was when there is none.
template <typename Value> bool told(const Result<Value> &result, QString *error)
{
    if (!result && error && !result.problem().text.isEmpty())
        *error = result.problem().text;
    return bool(result);
}

/// Every CR LF pair and every CR left becomes LF.
QString normalizeNewlines(QString text);

/// The lines of a script: line ends normalized, no empty last line for a final line feed.
QStringList scriptLines(const QString &text);

/// The text of a script file: its bytes up to the first NUL as UTF-8. A problem when the path is a link or no
/// regular file, or the file cannot be read or is larger than 16 MiB.
Result<QString> readScript(const QString &path);
