// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/Problem.h"
#include "config/EditorXmlData.h"

#include <QString>

struct Product;

/// The settings that a file holds, over the defaults for what it does not mention.
struct SettingsFile
{
    QString kind; ///< "document" or "package"
    const Product *product = nullptr;
    EditorXmlData settings;
};

/// Reads a configuration document. A document whose root element is neither product's is refused.
Verdict readDocument(const QString &path, SettingsFile &file);

/// Reads a document or a customized package, whichever the file's contents say it is.
Verdict readSettings(const QString &path, SettingsFile &file);
