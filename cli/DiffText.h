// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/TextDiff.h"

#include <QJsonArray>

class Console;

/// A text before and after, under one name; a file that was not there before is empty then.
struct FileDiff
{
    QString name;
    QString before;
    QString after;
    QString sideBefore = QStringLiteral("vendor"); ///< in front of the name, where the diff names the file
    QString sideAfter = QStringLiteral("customized");

    QList<DiffHunk> hunks() const;
    /// Empty when nothing differs.
    QString unified() const;
};

/// As unified diffs, in colours where standard output is a terminal that has some and NO_COLOR is not set.
void writeDiffs(const QList<FileDiff> &diffs, Console &console);

/// Objects with "name", "changed" and "diff", which is null when nothing differs.
QJsonArray diffsArray(const QList<FileDiff> &diffs);

/// A page of HTML that needs nothing else: a heading, some lines and the diffs.
QString diffPage(const QString &title, const QStringList &lines, const QList<FileDiff> &diffs);
