// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

#include <QList>
#include <QString>

/// A file of a run and what it is there for, e.g. "input".
struct NamedPath
{
    QString role;
    QString path;
};

/// What keeps a run from destroying one of its own files. Names that differ only in case, or in the form of
/// their accents, are one place on a Mac, so they are here, wherever no file says otherwise. Any thread.
namespace PathRules {

/// Whether two paths lead to one file, or to one place where no file is yet.
bool samePlace(const QString &first, const QString &second);

/// Whether the path, or what it leads to when it is a link, lies in this existing folder or below it.
bool liesIn(const QString &folder, const QString &path);

/// That no two of the files are one. Empty paths stand for files that were not named.
Result<> allDiffer(const QList<NamedPath> &files);

/// That the path can stand in quotes in a command line.
Result<> quotable(const QString &path);

/// That a file can be made at the path. A regular file there may be replaced; links and special files never.
Result<> writable(const QString &path);

} // namespace PathRules
