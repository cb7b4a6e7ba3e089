// SPDX-License-Identifier: Apache-2.0
#include "config/CCommon.h"
#include "config/ConfigDocument.h"
#include "config/XmlMarkup.h"
#include "core/Logging.h"

#include <QFileInfo>

namespace {

/// For people, who see nothing of a document that is refused.
void tellReason(const QString &path, const QString &reason)
{
    qCWarning(logConfig).noquote() << QStringLiteral("%1: was not imported: %2").arg(path, reason);
}

Result<QDomDocument> loadForImport(const QString &path)
{
    XmlStream::Limits limits;
    limits.bytes = ConfigDocument::maximumImportBytes;
    Result<QDomDocument> document = ConfigDocument::load(path, limits);
    if (!document) {
        qCDebug(logConfig) << "ParseXml: Failed to parse XML content." << document.problem().text;
        tellReason(path, document.problem().text);
    }
    return document;
}

bool canBeOpened(const QString &path)
{
    const QFileInfo info(path);
    return info.isFile() && info.isReadable();
}

} // namespace

bool CCommon::ParseXml(const QString &path, EditorXmlData *pData)
{
    if (!pData) {
        qCDebug(logConfig) << "ParseXml: pData is null.";
        return false;
    }
    if (!canBeOpened(path)) {
        qCDebug(logConfig) << "ParseXml: Failed to open file:" << path;
        tellReason(path, QStringLiteral("it cannot be read"));
        return false;
    }
    const Result<QDomDocument> document = loadForImport(path);
    if (!document)
        return false;
    if (document->documentElement().isNull()) {
        qCDebug(logConfig) << "ParseXml: Root element is null.";
        return false;
    }
    ConfigDocument::apply(*document, *pData);
    return true;
}

void CCommon::printDomElement(const QString &tag, const QDomElement &element)
{
    if (!logConfig().isDebugEnabled())
        return;
    qCDebug(logConfig).noquote() << tag + QStringLiteral(" element:") +
                                        QString::fromUtf8(XmlMarkup::of(element, 4));
}
