// SPDX-License-Identifier: Apache-2.0
#include "config/ConfigDocument.h"

#include "config/CCommon.h"
#include "config/KeptElement.h"
#include "config/XmlMarkup.h"
#include "config/XmlTree.h"
#include "core/SafeFile.h"

#include <QDomDocument>
#include <QFile>
#include <QFileInfo>

namespace {

bool fail(QString *error, const QString &text)
{
    if (error)
        *error = text;
    return false;
}

/// One byte more than the reader accepts is enough for it to refuse what is larger.
bool readBounded(const QString &path, qint64 maximumBytes, QByteArray &bytes, QString *error)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isFile())
        return fail(error, QStringLiteral("is not a regular file"));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return fail(error, file.errorString());
    bytes = file.read(maximumBytes + 1);
    return true;
}

/// A document that this program would refuse, or understand otherwise, is not worth an old file.
bool readsBack(const QByteArray &bytes, const QDomDocument &written, QString *error)
{
    QDomDocument read;
    QString problem;
    if (!XmlTree::read(bytes, read, &problem))
        return fail(error, QStringLiteral("what is to be written could not be read again: ") + problem);
    return sameElement(read.documentElement(), written.documentElement()) ||
           fail(error, QStringLiteral("what is to be written could not be read again as it is"));
}

} // namespace

bool ConfigDocument::load(const QString &path, QDomDocument &document, QString *error,
                          const XmlStream::Limits &limits)
{
    QByteArray bytes;
    return readBounded(path, limits.bytes, bytes, error) && XmlTree::read(bytes, document, error, limits);
}

QDomDocument ConfigDocument::fromSettings(const EditorXmlData &settings, bool editor, const QString &version)
{
    QDomDocument document;
    CCommon::EditorXmlCreateEmptyXml(document, editor, settings);
    CCommon::EditorXmlSavePreferences(document, version, settings);
    CCommon::EditorXmlSavePlugins(document, settings);
    CCommon::EditorXmlSaveInstallation(document, version);
    CCommon::EditorXmlSaveRibbonSet(document, settings);
    return document;
}

QByteArray ConfigDocument::toXml(const QDomDocument &document, QString *error)
{
    const QByteArray bytes = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + XmlMarkup::of(document, 4);
    return readsBack(bytes, document, error) ? bytes : QByteArray();
}

bool ConfigDocument::save(const QDomDocument &document, const QString &path, QString *error,
                          SafeFile::Lasting lasting)
{
    const QByteArray bytes = toXml(document, error);
    if (bytes.isEmpty())
        return false;
    const Result<> saved = SafeFile::replaceContents(path, bytes, lasting);
    return saved || fail(error, saved.problem().text);
}
