// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

#include <QString>

// The files of a build and its work folder. What two paths have to do with each other is for PathRules to
// say.

/// The files that a build reads and writes, as absolute paths.
struct BuildFiles
{
    QString input;
    QString output;
    QString document;
};

/// Where the configuration document is written when it is not to be kept: "ProfStore.xml" in the
/// temporary folder.
QString temporaryDocumentPath();

/// That the input is a file, the output can become one, all differ, and those that a command line names can
/// stand in its quotes.
Result<> checkFiles(const BuildFiles &files);

/// That no two of the files are one.
Result<> checkFilesDiffer(const BuildFiles &files);

/// That removeWorkFolder would not refuse.
Result<> checkWorkFolder(const QString &folder, const BuildFiles &files);

/// Removes a real folder and all in it; a success as well when there is nothing. Refuses when the path is
/// anything else, or one of the files lies in the folder.
Result<> removeWorkFolder(const QString &folder, const BuildFiles &files);
