// SPDX-License-Identifier: Apache-2.0
#include "config/ConfigDocument.h"

#include "config/CCommon.h"
#include "config/EditorXmlData.h"
#include "config/KeptElement.h"
#include "config/Product.h"
#include "config/SettingItems.h"
#include "config/XmlMarkup.h"
#include "config/XmlTree.h"
#include "core/SafeFile.h"

#include <QFile>
#include <QFileInfo>

namespace {

using Section = Setting::Section;

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

void readItem(const QDomElement &item, Section section, EditorXmlData &data)
{
    const QString key = item.attribute(QStringLiteral("Text"));
    for (const SettingItem &known : documentItems(section)) {
        if (key != known.key)
            continue;
        for (const Setting *setting : known.settings)
            setting->document.read(data, item.attribute(setting->place.attribute));
    }
}

void readItems(const QDomElement &items, Section section, EditorXmlData &data)
{
    for (QDomElement item = items.firstChildElement(); !item.isNull(); item = item.nextSiblingElement())
        readItem(item, section, data);
}

/// Every child counts, whatever its key.
void readPlugins(const QDomElement &section, EditorXmlData &data)
{
    if (section.isNull())
        return;
    const Setting &setting = settingIn(Section::Plugins);
    QStringList names;
    for (QDomElement item = section.firstChildElement(); !item.isNull(); item = item.nextSiblingElement())
        names.append(item.attribute(setting.place.attribute));
    setting.document.read(data, names.join(QLatin1Char(';')));
}

void readElement(const QDomElement &parent, Section section, const QString &tag, EditorXmlData &data)
{
    if (parent.isNull())
        return;
    QDomElement &element = elementOf(settingIn(section), data);
    element = keptElement(parent.firstChildElement(elementName(section)));
    CCommon::printDomElement(tag, element);
}

} // namespace

Result<QDomDocument> ConfigDocument::load(const QString &path, const XmlStream::Limits &limits)
{
    const Result<QByteArray> bytes = readBounded(path, limits.bytes);
    return bytes ? XmlTree::read(*bytes, limits) : bytes.problem();
}

void ConfigDocument::apply(const QDomDocument &document, EditorXmlData &data)
{
    SectionElements sections(document.documentElement());
    readItems(sections[Section::Preferences], Section::Preferences, data);
    readPlugins(sections[Section::Plugins], data);
    readItems(sections[Section::Installation], Section::Installation, data);
    readElement(sections[Section::Ribbon], Section::Ribbon,
                QStringLiteral("CCommon::ParseXml ribbon category"), data);
    readElement(sections[Section::QuickAccessBar], Section::QuickAccessBar,
                QStringLiteral("CCommon::ParseXml element"), data);
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
