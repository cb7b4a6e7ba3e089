// SPDX-License-Identifier: Apache-2.0
#include "config/CCommon.h"
#include "config/ConfigDocument.h"
#include "config/DocumentSettings.h"
#include "config/EditorXmlData.h"
#include "config/KeptElement.h"
#include "config/Logging.h"
#include "config/XmlMarkup.h"
#include "config/XmlTree.h"

#include <QDomDocument>
#include <QFileInfo>

namespace {

void readPreference(const QDomElement &item, EditorXmlData &data)
{
    const QString key = item.attribute(QStringLiteral("Text"));
    for (const DocumentSetting &setting : documentSettings()) {
        if (key == setting.key)
            setting.read(data, item.attribute(setting.attribute));
    }
}

void readPreferences(const QDomElement &section, EditorXmlData &data)
{
    for (QDomElement item = section.firstChildElement(); !item.isNull(); item = item.nextSiblingElement())
        readPreference(item, data);
}

void readPlugins(const QDomElement &section, EditorXmlData &data)
{
    if (section.isNull())
        return;
    QStringList names;
    for (QDomElement item = section.firstChildElement(); !item.isNull(); item = item.nextSiblingElement())
        names.append(item.attribute(QStringLiteral("UnloadPluginArray")));
    data.strUnloadPluginArray = names.join(QLatin1Char(';'));
}

void readInstallation(const QDomElement &section, EditorXmlData &data)
{
    for (QDomElement item = section.firstChildElement(); !item.isNull(); item = item.nextSiblingElement()) {
        if (item.attribute(QStringLiteral("Text")) == QLatin1String("SetAsDefaultViewer"))
            data.bSetAsDefaultViewer = item.attribute(QStringLiteral("Disable")) == QLatin1String("0");
    }
}

void readRibbon(const QDomElement &section, EditorXmlData &data)
{
    if (section.isNull())
        return;
    data.elemRibbonCategory = keptElement(section.firstChildElement(QStringLiteral("RibbonUI")));
    CCommon::printDomElement(QStringLiteral("CCommon::ParseXml ribbon category"), data.elemRibbonCategory);
}

void readQuickAccessBar(const QDomElement &section, EditorXmlData &data)
{
    if (section.isNull())
        return;
    data.elemQuickAccessBar = keptElement(section.firstChildElement(QStringLiteral("QuickAccessBar")));
    CCommon::printDomElement(QStringLiteral("CCommon::ParseXml element"), data.elemQuickAccessBar);
}

bool loadForImport(const QString &path, QDomDocument &document)
{
    XmlStream::Limits limits;
    limits.bytes = ConfigDocument::maximumImportBytes;
    QString problem;
    if (ConfigDocument::load(path, document, &problem, limits))
        return true;
    qCDebug(logConfig) << "ParseXml: Failed to parse XML content." << problem;
    return false;
}

bool canBeOpened(const QString &path)
{
    const QFileInfo info(path);
    return info.isFile() && info.isReadable();
}

} // namespace

QStringList ConfigDocument::sectionNames()
{
    return {QStringLiteral("Preferences"), QStringLiteral("Plugins"), QStringLiteral("Installation_Options"),
            QStringLiteral("RibbonSetRibbonCategory"), QStringLiteral("RibbonSetTabElements")};
}

void ConfigDocument::apply(const QDomDocument &document, EditorXmlData &data)
{
    const QVector<QDomElement> sections = XmlTree::firstNamed(document.documentElement(), sectionNames());
    readPreferences(sections.at(0), data);
    readPlugins(sections.at(1), data);
    readInstallation(sections.at(2), data);
    readRibbon(sections.at(3), data);
    readQuickAccessBar(sections.at(4), data);
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
    QDomDocument document;
    if (!loadForImport(path, document))
        return false;
    if (document.documentElement().isNull()) {
        qCDebug(logConfig) << "ParseXml: Root element is null.";
        return false;
    }
    ConfigDocument::apply(document, *pData);
    return true;
}

void CCommon::printDomElement(const QString &tag, const QDomElement &element)
{
    if (!logConfig().isDebugEnabled())
        return;
    qCDebug(logConfig).noquote() << tag + QStringLiteral(" element:") +
                                        QString::fromUtf8(XmlMarkup::of(element, 4));
}
