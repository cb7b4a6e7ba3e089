// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/XmlStream.h"
#include "core/SafeFile.h"

#include <QByteArray>
#include <QDomDocument>

struct EditorXmlData;
struct Product;

/// The configuration document "ProfStore.xml" as a whole: from a file, as a tree, to a file. `CCommon`
/// has the single steps. Problems do not name the file.
namespace ConfigDocument {

/// The largest document that the window imports, because nothing else happens in it until that is done.
constexpr qint64 maximumImportBytes = 1024 * 1024;

/// Parses a file under XmlStream's limits or narrower ones. A missing or unreadable file, one that is no
/// regular file and one that XmlTree refuses are refused.
Result<QDomDocument> load(const QString &path, const XmlStream::Limits &limits = {});

/// Overlays the record with what the document says; what the document does not mention stays.
void apply(const QDomDocument &document, EditorXmlData &data);

/// The document of the settings for a product; `version` is the product's version.
QDomDocument fromSettings(const EditorXmlData &settings, const Product &product, const QString &version);

/// The document as UTF-8 with an XML declaration, an indent of 4 spaces and sorted attributes, so that equal
/// documents are equal files. Refuses what load() would refuse or read otherwise.
Result<QByteArray> toXml(const QDomDocument &document);

/// Writes toXml(). The old file stays when that fails; a link or a special file at the path is refused.
Result<> save(const QDomDocument &document, const QString &path,
              SafeFile::Lasting lasting = SafeFile::Lasting::Yes);

} // namespace ConfigDocument
