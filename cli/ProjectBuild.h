// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/ProjectPlan.h"

#include <functional>

/// How one variant ended.
struct VariantOutcome
{
    QString variant;
    Result<> result;
    bool isMade = false; ///< false for one that was as it should be, too
    QList<StampedFile> files;
    QList<FileWarning> warnings; ///< those that are allowed
    double seconds = 0;
};

/// What is told while variants are made. From any thread, one call at a time.
struct BuildListener
{
    std::function<void(const QString &variant, const QString &step)> began;
    std::function<void(const VariantOutcome &outcome)> ended;
};

/// Makes the variants that are not as they should be, up to `jobs` packages at a time. The outputs of a
/// variant take their places only when all of them are made; those of one that fails stay what they were.
QList<VariantOutcome> buildProject(const ProjectPlan &plan, int jobs, const BuildListener &listener);
