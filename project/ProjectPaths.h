// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

#include <QString>

struct ProjectOutput;

/// Where the files of a project lie. Paths never pass a link below the project's folder, and outputs never
/// leave theirs. Any thread; the problems name no file.
namespace ProjectPaths {

/// The file name of an output without one of its own, with placeholders.
QString usualName(const ProjectOutput &output);

/// That no folder on the way from the project's folder to this file below it, nor the file, is a link.
Result<> checkInput(const QString &folder, const QString &path);

/// That the filled path is one that an output can have: all on the way is a real folder or not there yet.
Result<> checkOutput(const QString &folder, const QString &relativePath);

/// Makes the folders on the way to a file.
Result<> makeFolders(const QString &folder, const QString &relativePath);

} // namespace ProjectPaths
