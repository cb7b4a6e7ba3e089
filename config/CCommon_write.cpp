// SPDX-License-Identifier: Apache-2.0
#include "config/CCommon.h"
#include "config/DefaultPlugins.h"
#include "config/DocumentSettings.h"
#include "config/EditorXmlData.h"
#include "config/Logging.h"
#include "config/XmlTree.h"

#include <QDomDocument>
#include <QFile>

namespace {

QDomElement appendElement(QDomDocument &document, QDomElement parent, const QString &tagName)
{
    const QDomElement element = document.createElement(tagName);
    parent.appendChild(element);
    return element;
}

QDomElement appendRoot(QDomDocument &document, bool editor)
{
    QDomElement root =
        document.createElement(editor ? QStringLiteral("PelixPDFEditor") : QStringLiteral("PelixPDFReader"));
    document.appendChild(root);
    root.setAttribute(QStringLiteral("version"), QString());
    root.setAttribute(QStringLiteral("Edition"), editor ? QStringLiteral("Biz") : QString());
    root.setAttribute(QStringLiteral("XMLversion"), QStringLiteral("2026.2.0"));
    return root;
}

QString builderValue(const DocumentSetting &setting)
{
    return setting.builderValue ? setting.builderValue(theEditorXmlData).value_or(QString()) : QString();
}

void appendPreferences(QDomDocument &document, QDomElement parent)
{
    QDomElement section = appendElement(document, parent, QStringLiteral("Preferences"));
    QDomElement item;
    for (const DocumentSetting &setting : documentSettings()) {
        if (item.attribute(QStringLiteral("Text")) != setting.key) {
            item = appendElement(document, section, QStringLiteral("Preference"));
            item.setAttribute(QStringLiteral("Text"), setting.key);
        }
        item.setAttribute(setting.attribute, builderValue(setting));
    }
}

void appendPlugins(QDomDocument &document, QDomElement parent)
{
    QDomElement section = appendElement(document, parent, QStringLiteral("Plugins"));
    QDomElement item = appendElement(document, section, QStringLiteral("Plugin"));
    item.setAttribute(QStringLiteral("Text"), QStringLiteral("Plugin"));
    item.setAttribute(QStringLiteral("UnloadPluginArray"), QString());
}

void appendInstallation(QDomDocument &document, QDomElement parent)
{
    QDomElement section = appendElement(document, parent, QStringLiteral("Installation_Options"));
    const QString disable =
        theEditorXmlData.bSetAsDefaultViewer ? QStringLiteral("Disable:0") : QStringLiteral("Disable:1");
    CCommon::CreateItem(QStringLiteral("Installation_Option"),
                        {disable, QStringLiteral("Text:SetAsDefaultViewer")}, document, section);
}

QDomElement firstNamed(const QDomDocument &document, const QString &tagName)
{
    return document.elementsByTagName(tagName).at(0).toElement();
}

/// Only an Editor document carries the product's version; the products read it that way.
void setEditorVersion(const QDomDocument &document, const QString &version)
{
    QDomElement root = firstNamed(document, QStringLiteral("PelixPDFEditor"));
    if (root.hasAttributes())
        root.setAttribute(QStringLiteral("version"), version);
}

} // namespace

void CCommon::EditorXmlCreateEmptyXml(QDomDocument &document, bool bEditor)
{
    const QDomElement root = appendRoot(document, bEditor);
    const QDomElement store = appendElement(document, root, QStringLiteral("Profstore"));
    appendPreferences(document, store);
    appendPlugins(document, store);
    appendInstallation(document, store);
    appendElement(document, store, QStringLiteral("RibbonSetRibbonCategory"));
    appendElement(document, store, QStringLiteral("RibbonSetTabElements"));
}

void CCommon::CreateItem(const QString &tagName, const QStringList &attributes, QDomDocument &document,
                         QDomElement &parent)
{
    qCDebug(logConfig) << tagName;
    QDomElement element = appendElement(document, parent, tagName);
    for (const QString &attribute : attributes) {
        const QStringList parts = attribute.split(QLatin1Char(':'));
        if (parts.size() == 2)
            element.setAttribute(parts.at(0), parts.at(1));
    }
}

void CCommon::EditorXmlSavePreferences(QDomDocument &document, const QString &version)
{
    const QDomElement section = firstNamed(document, QStringLiteral("Preferences"));
    if (!section.hasChildNodes())
        return;
    for (QDomElement item = section.firstChildElement(); !item.isNull(); item = item.nextSiblingElement()) {
        if (item.hasAttribute(QStringLiteral("Text")))
            EditorXmlFillPreValue(item.attribute(QStringLiteral("Text")), item.attributes());
    }
    setEditorVersion(document, version);
}

void CCommon::EditorXmlFillPreValue(const QString &text, const QDomNamedNodeMap &attributes)
{
    for (const DocumentSetting &setting : documentSettings()) {
        if (!setting.fillValue || text.compare(setting.key, Qt::CaseInsensitive) != 0)
            continue;
        const std::optional<QString> value = setting.fillValue(theEditorXmlData);
        QDomNode attribute = attributes.namedItem(setting.attribute);
        if (value && !attribute.isNull())
            attribute.setNodeValue(*value);
    }
}

void CCommon::EditorXmlSavePlugins(QDomDocument &document)
{
    QDomElement item = firstNamed(document, QStringLiteral("Plugins")).firstChild().toElement();
    if (item.hasAttribute(QStringLiteral("UnloadPluginArray")))
        item.setAttribute(QStringLiteral("UnloadPluginArray"), theEditorXmlData.strUnloadPluginArray);
}

void CCommon::EditorXmlSaveInstallation(QDomDocument &document, const QString &version)
{
    if (!firstNamed(document, QStringLiteral("Installation_Options")).isNull())
        setEditorVersion(document, version);
}

void CCommon::EditorXmlSaveRibbonSet(QDomDocument &document)
{
    if (theEditorXmlData.elemRibbonCategory.isNull())
        return;
    // Both are looked for first: an imported ribbon may hold elements of their names.
    QDomElement ribbonSection = firstNamed(document, QStringLiteral("RibbonSetRibbonCategory"));
    QDomElement barSection = firstNamed(document, QStringLiteral("RibbonSetTabElements"));
    ribbonSection.appendChild(document.importNode(theEditorXmlData.elemRibbonCategory, true));
    barSection.appendChild(document.importNode(theEditorXmlData.elemQuickAccessBar, true));
}

QList<_EditorXmlPuginData_> CCommon::EditorXmlReadPluginsTemplate(bool bEditor)
{
    QFile file(bEditor ? QStringLiteral("://EditorXml/EditorXml/DefaultPluginsList_PDFEditor_Mac.xml")
                       : QStringLiteral("://EditorXml/EditorXml/DefaultPluginsList_PDFReader_Mac.xml"));
    QDomDocument document;
    if (!file.open(QIODevice::ReadOnly) || !XmlTree::read(file.readAll(), document))
        return {};
    QList<_EditorXmlPuginData_> plugins;
    const QDomElement root = document.documentElement();
    for (QDomElement row = root.firstChildElement(QStringLiteral("Plugin")); !row.isNull();
         row = row.nextSiblingElement(QStringLiteral("Plugin"))) {
        plugins.append({row.attribute(QStringLiteral("Name")), row.attribute(QStringLiteral("PIPath")),
                        row.attribute(QStringLiteral("Description"))});
    }
    return plugins;
}
