// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// Shows a file in the Finder or, elsewhere, its folder in the file manager.
void showInFolder(const QString &file);

/// What the system calls that, for a button; translated.
QString showInFolderText();
