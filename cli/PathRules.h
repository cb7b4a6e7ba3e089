// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/Problem.h"

#include <QList>
#include <QString>
#include <QStringList>

/// A file of the command line and what it is there for, e.g. "input".
struct NamedPath
{
    QString role;
    QString path;
};

/// Why two of the files are one: the same file under two names, or the same place where no file is yet.
/// Empty paths stand for files that were not named. Names that differ only in case are one place then,
/// because on many file systems they will be.
Verdict sharedFile(const QList<NamedPath> &files);

/// Which path cannot be given to the commands that take packages apart.
Verdict unquotable(const QStringList &paths);

/// Why a file cannot be made at the path. An existing one may be replaced only when `force` is set; links
/// and special files never.
Verdict unwritable(const QString &path, bool force);
