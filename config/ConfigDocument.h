// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/XmlStream.h"
#include "core/SafeFile.h"

#include <QByteArray>

struct EditorXmlData;
class QDomDocument;

/// The configuration document "ProfStore.xml" as a whole: from a file, as a tree, to a file. `CCommon`
/// has the single steps. `error` is optional and gets one line without the file's name.
namespace ConfigDocument {

/// The largest document that the window imports, because nothing else happens in it until that is done.
constexpr qint64 maximumImportBytes = 1024 * 1024;

/// Parses a file under XmlStream's limits or narrower ones. A missing or unreadable file, one that is no
/// regular file and one that XmlTree refuses are refused; the document is then as it was.
bool load(const QString &path, QDomDocument &document, QString *error = nullptr,
          const XmlStream::Limits &limits = {});

/// Overlays the record with what the document says; what the document does not mention stays.
void apply(const QDomDocument &document, EditorXmlData &data);

/// The document of the settings for a product; `version` is the product's version.
QDomDocument fromSettings(const EditorXmlData &settings, bool editor, const QString &version);

/// The document as UTF-8 with an XML declaration, an indent of 4 spaces and sorted attributes, so that equal
/// documents are equal files. Empty for what load() would refuse or read otherwise.
QByteArray toXml(const QDomDocument &document, QString *error = nullptr);

/// Writes toXml(). The old file stays when that fails; a link or a special file at the path is refused.
bool save(const QDomDocument &document, const QString &path, QString *error = nullptr,
          SafeFile::Lasting lasting = SafeFile::Lasting::Yes);

} // namespace ConfigDocument
