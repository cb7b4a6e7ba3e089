// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/FileWarning.h"
#include "cli/Problem.h"
#include "config/EditorXmlData.h"

#include <QString>

struct Product;

/// The settings that a file holds, over the defaults for what it does not mention.
struct SettingsFile
{
    QString kind;   ///< "document", "profile" or "package"
    QString signer; ///< who signed a profile; empty when nobody did, and for the other kinds
    const Product *product = nullptr;
    EditorXmlData settings;
    QList<FileWarning> warnings; ///< of what a document holds beside its settings
};

/// Reads a configuration document. A document whose root element is neither product's is refused.
Verdict readDocument(const QString &path, SettingsFile &file);

/// Reads a configuration profile, signed or not, whoever signed it.
Verdict readProfileFile(const QString &path, SettingsFile &file);

/// Reads a document, a profile or a customized package, whichever the file's contents say it is.
Verdict readSettings(const QString &path, SettingsFile &file);
