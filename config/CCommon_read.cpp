// SPDX-License-Identifier: Apache-2.0
#include "config/CCommon.h"
#include "config/ConfigDocument.h"
#include "config/EditorXmlData.h"
#include "config/KeptElement.h"
#include "config/SettingItems.h"
#include "config/XmlMarkup.h"
#include "config/XmlTree.h"
#include "core/Logging.h"

#include <QFileInfo>

namespace {

using Section = Setting::Section;

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

Result<QDomDocument> loadForImport(const QString &path)
{
    XmlStream::Limits limits;
    limits.bytes = ConfigDocument::maximumImportBytes;
    Result<QDomDocument> document = ConfigDocument::load(path, limits);
    if (!document)
        qCDebug(logConfig) << "ParseXml: Failed to parse XML content." << document.problem().text;
    return document;
}

bool canBeOpened(const QString &path)
{
    const QFileInfo info(path);
    return info.isFile() && info.isReadable();
}

} // namespace

void ConfigDocument::apply(const QDomDocument &document, EditorXmlData &data)
{
    // In the order of Setting::Section.
    const QVector<QDomElement> sections = XmlTree::firstNamed(document.documentElement(), sectionNames());
    readItems(sections.at(0), Section::Preferences, data);
    readPlugins(sections.at(1), data);
    readItems(sections.at(2), Section::Installation, data);
    readElement(sections.at(3), Section::Ribbon, QStringLiteral("CCommon::ParseXml ribbon category"), data);
    readElement(sections.at(4), Section::QuickAccessBar, QStringLiteral("CCommon::ParseXml element"), data);
}

bool CCommon::ParseXml(const QString &path, EditorXmlData *pData)
{
    if (!pData) {
        qCDebug(logConfig) << "ParseXml: pData is null.";
        return false;
    }
    if (!canBeOpened(path)) {
        qCDebug(logConfig) << "ParseXml: Failed to open file:" << path;
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
