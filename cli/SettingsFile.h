// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/FileWarning.h"
#include "config/EditorXmlData.h"
#include "core/Result.h"
#include "profile/SignedMessage.h"

#include <QList>
#include <QString>

struct Product;

/// The settings that a file holds, over the defaults for what it does not mention.
struct SettingsFile
{
    QString kind; ///< "document", "profile" or "package"
    const Product *product = nullptr;
    EditorXmlData settings;
    QList<FileWarning> warnings;  ///< of what a document holds beside its settings
    QList<ProfileSigner> signers; ///< of a profile; none when it is not signed, and for the other kinds
    QByteArray contents{}; ///< when kept: the document, JSON or property list, out of package and signature
};

/// Whether to keep what the settings were read from.
enum class Contents { Dropped, Kept };

/// Reads a configuration document that is to be used for a product: one of the other product gets a warning.
/// A document whose root element is neither product's is refused.
Result<SettingsFile> readDocument(const Product &wanted, const QString &path);

/// The same of either product. Where a document is accepted, JSON of settings is, too; when it names no
/// product it is for this one, which may be null.
Result<SettingsFile> readDocumentFile(const QString &path, const Product *product = nullptr);

/// Reads a configuration profile, signed or not, whoever signed it; of one with settings of both products
/// those of `wanted`.
Result<SettingsFile> readProfileFile(const QString &path, const Product *wanted = nullptr);

/// Who signed a profile, for a message that begins "is signed by"; not empty. Names are printable in it.
QString signersText(const QList<ProfileSigner> &signers);

/// Reads a document, a profile or a customized package, whichever the file's contents say it is. The product,
/// which may be null, is that of JSON that names none, and goes before the other in a profile of both.
Result<SettingsFile> readSettings(const QString &path, const Product *product = nullptr,
                                  Contents contents = Contents::Dropped);
