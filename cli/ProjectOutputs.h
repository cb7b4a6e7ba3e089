// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/FileWarning.h"
#include "config/EditorXmlData.h"
#include "core/Result.h"
#include "project/Project.h"

#include <QList>

class SharedExpansion;
struct StampedFile;

/// What the outputs of a variant are made from.
struct OutputSources
{
    const Project &project;
    const ProjectVariant &variant;
    const EditorXmlData &settings;
    QString vendorVersion;           ///< empty when nobody has looked
    const QList<StampedFile> &files; ///< that were made of the variant before
    SharedExpansion *expansion;      ///< of the vendor's package; may be null for what needs one thread
};

/// Whether the output is no matter of Foundation, whose calls belong to one thread.
bool isMadeInAnyThread(const ProjectOutput &output);

/// Makes one output as a new file. What is worth a warning is added, made or not.
Result<> makeOutput(const ProjectOutput &output, const OutputSources &sources, const QString &path,
                    QList<FileWarning> &warnings);
