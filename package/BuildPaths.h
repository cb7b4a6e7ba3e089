// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// The paths of a build and the rules that keep a build from destroying one of its own files.

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

/// False when the input is no file, when the output cannot become one (it is a link, a folder or a device,
/// or has no folder to lie in), when two of the files are the same, or when a path holds a character that
/// ends the quotes of a command line.
bool checkFiles(const BuildFiles &files, QString *error);

/// False when two of the files are the same: equal paths, or the same file on the disk.
bool checkFilesDiffer(const BuildFiles &files, QString *error);

/// Whether a path can stand in quotes in a command line.
bool checkQuoting(const QString &path, QString *error);

/// Removes a real folder and all in it; true as well when there is nothing. Refuses when the path is
/// anything else, or one of the files lies in the folder.
bool removeWorkFolder(const QString &folder, const BuildFiles &files, QString *error);
