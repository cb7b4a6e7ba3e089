// SPDX-License-Identifier: Apache-2.0
#include "config/ConfigDocument.h"

#include "config/CCommon.h"
#include "config/KeptElement.h"
#include "config/Product.h"
#include "config/XmlMarkup.h"
#include "config/XmlTree.h"
#include "core/SafeFile.h"

#include <QFile>
#include <QFileInfo>

namespace {

/// One byte more than the reader accepts is enough for it to refuse what is larger.
Result<QByteArray> readBounded(const QString &path, qint64 maximumBytes)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isFile())
        return Problem{{}, QStringLiteral("is not a regular file")};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Problem{{}, file.errorString()};
    return file.read(maximumBytes + 1);
}

/// A document that this program would refuse, or understand otherwise, is not worth an old file.
Result<> readsBack(const QByteArray &bytes, const QDomDocument &written)
{
    const Result<QDomDocument> read = XmlTree::read(bytes);
    if (!read)
        return Problem{
            {}, QStringLiteral("what is to be written could not be read again: ") + read.problem().text};
    if (!sameElement(read->documentElement(), written.documentElement()))
        return Problem{{}, QStringLiteral("what is to be written could not be read again as it is")};
    return {};
}

} // namespace

Result<QDomDocument> ConfigDocument::load(const QString &path, const XmlStream::Limits &limits)
{
    const Result<QByteArray> bytes = readBounded(path, limits.bytes);
    return bytes ? XmlTree::read(*bytes, limits) : bytes.problem();
}

QDomDocument ConfigDocument::fromSettings(const EditorXmlData &settings, const Product &product,
                                          const QString &version)
{
    QDomDocument document;
    CCommon::EditorXmlCreateEmptyXml(document, product, settings);
    CCommon::EditorXmlSavePreferences(document, version, settings);
    CCommon::EditorXmlSavePlugins(document, settings);
    CCommon::EditorXmlSaveInstallation(document, version);
    CCommon::EditorXmlSaveRibbonSet(document, settings);
    return document;
}

Result<QByteArray> ConfigDocument::toXml(const QDomDocument &document)
{
    const QByteArray bytes = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + XmlMarkup::of(document, 4);
    const Result<> isReadable = readsBack(bytes, document);
    return isReadable ? Result<QByteArray>(bytes) : isReadable.problem();
}

Result<> ConfigDocument::save(const QDomDocument &document, const QString &path, SafeFile::Lasting lasting)
{
    const Result<QByteArray> bytes = toXml(document);
    if (!bytes)
        return bytes.problem();
    const Result<> saved = SafeFile::replaceContents(path, *bytes, lasting);
    return saved ? saved : Problem{{}, saved.problem().text};
}
