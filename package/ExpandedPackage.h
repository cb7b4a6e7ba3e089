// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"
#include "core/SafeFile.h"

#include <QString>

struct EditorXmlData;
struct Product;

/// Additions to an expanded package. `folder` is its component package, or the top folder above that; see
/// scriptsFolder(). All but version() block on external commands; any thread.
namespace ExpandedPackage {

/// A preference that postinstall writes. The three texts enter a sed expression unescaped.
struct Preference
{
    QString key;
    QString name;
    QString value;
};

/// The product version that the postinstall script names, see productVersion(); empty without such a script.
Result<QString> version(const QString &folder, const Product &product);

/// Writes the document of the settings to `path`, or to temporaryDocumentPath() when that is empty, and adds
/// it. The document stays where it was written.
Result<> addSettings(const QString &folder, const Product &product, const EditorXmlData &settings,
                     const QString &path, SafeFile::Lasting lasting = SafeFile::Lasting::Yes);

/// Copies a document into the scripts as "ProfStore.xml" and switches it on; refused when there is one.
Result<> addDocument(const QString &document, const QString &folder, const Product &product);

/// Puts "key/name:value;" in front of the preference entries.
Result<> addPreference(const Preference &preference, const QString &folder, const Product &product);

/// Puts the entry that selects the sign-in of iManage there.
Result<> addIManageLogin(const QString &folder, const Product &product);

/// Adds the `duti` tool and switches on that postinstall registers the product as PDF viewer. Only for a
/// component package.
Result<> makeDefaultViewer(const QString &component);

/// Makes a script find the logged-in user at the console, where a device management runs it; all or nothing.
Result<> adaptPreinstall(const QString &folder, const Product &product);
Result<> adaptPostinstall(const QString &folder, const Product &product);

} // namespace ExpandedPackage
