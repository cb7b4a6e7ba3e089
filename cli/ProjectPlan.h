// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/FileWarning.h"
#include "config/EditorXmlData.h"
#include "core/Result.h"
#include "project/Project.h"
#include "project/Stamp.h"

#include <QHash>
#include <QList>
#include <QStringList>

/// What one variant is to become.
struct VariantPlan
{
    ProjectVariant variant;
    EditorXmlData settings;
    QList<FileWarning> warnings; ///< of the document that the settings begin with
    QByteArray inputs;           ///< digest of all that the outputs follow from
    QStringList changes;         ///< why it is to be made, as clauses; none when it is as it should be
    Result<> readiness;          ///< why it cannot be made
};

/// What is to be made of a project, found without making anything.
struct ProjectPlan
{
    Project project; ///< with the names of outputs filled in
    QString vendorVersion;
    QList<VariantPlan> variants;
    QStringList stale; ///< outputs of earlier builds that no variant has any more, below the project's folder
};

/// Looks at what there is and what there should be. `only` names the variants that are wanted; none stands
/// for all. The problem is one of the project, and then there is no plan for any variant.
Result<ProjectPlan> planProject(const Project &project, const QStringList &only);
