// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "lint/Rules.h"

#include <QJsonObject>

namespace Lint {

struct FileFindings
{
    QString file;   ///< as it was named
    QString member; ///< of a package, where all of it is about that
    QVector<Finding> findings;
};

/// One run in the Static Analysis Results Interchange Format 2.1.0, for services that show findings beside
/// the lines. Files that were named by a path below the current folder keep it. `problems` are what kept
/// files from being looked at.
QJsonObject sarifLog(const QVector<FileFindings> &files, const QVector<Problem> &problems);

} // namespace Lint
