// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "lint/Sarif.h"

#include <QStringList>

struct Product;

/// What `pct lint` has found.
struct LintOutcome
{
    QVector<Lint::FileFindings> files;
    QVector<Problem> problems; ///< of what could not be looked at
};

/// Looks at documents, profiles, packages, JSON and project files, and at what several of them share. A file
/// that is there but cannot be read is a finding. JSON that names no product is for this one, which may be
/// null.
LintOutcome lintedFiles(const QStringList &names, const Product *product);
