// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// In which lines two texts differ. Lines that stand once in both hold the texts together, so that a block
// that was moved in or out shows as one; what lies between them is compared closely while it is small. Time
// and memory grow with the texts, whatever they hold: what would cost more shows as replaced. Any thread.

struct DiffLine
{
    enum class Kind { Same, Removed, Added };

    Kind kind = Kind::Same;
    QString text; ///< as it stands there, without its line feed

    /// Blank, minus or plus.
    QChar mark() const;
};

/// Differences near each other, with some lines around them.
struct DiffHunk
{
    int oldStart = 0; ///< number of the first line, from 1; 0 when the old text has none of them
    int oldCount = 0;
    int newStart = 0;
    int newCount = 0;
    QList<DiffLine> lines;

    /// "@@ -1,3 +1,4 @@"
    QString heading() const;
};

/// The lines of a text, which end with a line feed each; one at the end that does not says so below itself.
QStringList diffableLines(const QString &text);

/// Empty when the texts are equal.
QList<DiffHunk> diffLines(const QStringList &before, const QStringList &after, int context = 3);

/// The whole as other programs write and read it; what cannot be seen is written out. Empty without hunks.
QString unifiedDiff(const QList<DiffHunk> &hunks, const QString &nameBefore, const QString &nameAfter);
