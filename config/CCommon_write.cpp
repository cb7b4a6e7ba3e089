// SPDX-License-Identifier: Apache-2.0
#include "config/CCommon.h"
#include "config/DefaultPlugins.h"
#include "config/EditorXmlData.h"
#include "config/Product.h"
#include "config/SettingItems.h"
#include "config/XmlTree.h"
#include "core/Logging.h"

#include <QFile>

namespace {

using Section = Setting::Section;

const QString textAttribute = QStringLiteral("Text");

QDomElement appendElement(QDomDocument &document, QDomElement parent, const QString &tagName)
{
    const QDomElement element = document.createElement(tagName);
    parent.appendChild(element);
    return element;
}

QDomElement appendRoot(QDomDocument &document, const Product &product)
{
    QDomElement root = document.createElement(product.rootElement);
    document.appendChild(root);
    root.setAttribute(QStringLiteral("version"), QString());
    root.setAttribute(QStringLiteral("Edition"), product.edition);
    root.setAttribute(QStringLiteral("XMLversion"), QStringLiteral("2026.2.0"));
    return root;
}

/// What stands there until the record's values are filled in.
QString firstText(const Setting &setting, const EditorXmlData &settings)
{
    switch (setting.document.written) {
    case Setting::Written::EmptyThenFilled:
        return {};
    case Setting::Written::ZeroThenFilled:
        return QStringLiteral("0");
    case Setting::Written::AtOnce:
        break;
    }
    return setting.document.text(settings).value_or(QString());
}

void appendItems(QDomDocument &document, const QDomElement &store, Section section,
                 const EditorXmlData &settings)
{
    const QDomElement parent = appendElement(document, store, sectionName(section));
    for (const SettingItem &held : documentItems(section)) {
        QDomElement item = appendElement(document, parent, elementName(section));
        item.setAttribute(textAttribute, held.key);
        for (const Setting *setting : held.settings)
            item.setAttribute(setting->place.attribute, firstText(*setting, settings));
    }
}

void appendInstallation(QDomDocument &document, const QDomElement &store, const EditorXmlData &settings)
{
    QDomElement parent = appendElement(document, store, sectionName(Section::Installation));
    for (const SettingItem &held : documentItems(Section::Installation)) {
        QStringList attributes;
        for (const Setting *setting : held.settings)
            attributes += setting->place.attribute + QLatin1Char(':') + firstText(*setting, settings);
        attributes += textAttribute + QLatin1Char(':') + held.key;
        CCommon::CreateItem(elementName(Section::Installation), attributes, document, parent);
    }
}

void fill(const Setting &setting, const QDomNamedNodeMap &attributes, const EditorXmlData &settings)
{
    if (setting.document.written == Setting::Written::AtOnce)
        return;
    const std::optional<QString> text = setting.document.text(settings);
    QDomNode attribute = attributes.namedItem(setting.place.attribute);
    if (text && !attribute.isNull())
        attribute.setNodeValue(*text);
}

QDomElement firstNamed(const QDomDocument &document, const QString &tagName)
{
    return document.elementsByTagName(tagName).at(0).toElement();
}

QDomElement firstOf(const QDomDocument &document, Section section)
{
    return firstNamed(document, sectionName(section));
}

/// Only an Editor document carries the product's version; the products read it that way.
void setEditorVersion(const QDomDocument &document, const QString &version)
{
    QDomElement root = firstNamed(document, Product::editor().rootElement);
    if (root.hasAttributes())
        root.setAttribute(QStringLiteral("version"), version);
}

} // namespace

void CCommon::EditorXmlCreateEmptyXml(QDomDocument &document, bool bEditor)
{
    EditorXmlCreateEmptyXml(document, Product::of(bEditor), theEditorXmlData);
}

void CCommon::EditorXmlCreateEmptyXml(QDomDocument &document, const Product &product,
                                      const EditorXmlData &settings)
{
    const QDomElement root = appendRoot(document, product);
    const QDomElement store = appendElement(document, root, QStringLiteral("Profstore"));
    appendItems(document, store, Section::Preferences, settings);
    appendItems(document, store, Section::Plugins, settings);
    appendInstallation(document, store, settings);
    appendElement(document, store, sectionName(Section::Ribbon));
    appendElement(document, store, sectionName(Section::QuickAccessBar));
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
    EditorXmlSavePreferences(document, version, theEditorXmlData);
}

void CCommon::EditorXmlSavePreferences(QDomDocument &document, const QString &version,
                                       const EditorXmlData &settings)
{
    const QDomElement section = firstOf(document, Section::Preferences);
    if (!section.hasChildNodes())
        return;
    for (QDomElement item = section.firstChildElement(); !item.isNull(); item = item.nextSiblingElement()) {
        if (item.hasAttribute(textAttribute))
            EditorXmlFillPreValue(item.attribute(textAttribute), item.attributes(), settings);
    }
    setEditorVersion(document, version);
}

void CCommon::EditorXmlFillPreValue(const QString &text, const QDomNamedNodeMap &attributes)
{
    EditorXmlFillPreValue(text, attributes, theEditorXmlData);
}

void CCommon::EditorXmlFillPreValue(const QString &text, const QDomNamedNodeMap &attributes,
                                    const EditorXmlData &settings)
{
    for (const SettingItem &known : documentItems(Section::Preferences)) {
        if (text.compare(known.key, Qt::CaseInsensitive) != 0)
            continue;
        for (const Setting *setting : known.settings)
            fill(*setting, attributes, settings);
    }
}

void CCommon::EditorXmlSavePlugins(QDomDocument &document)
{
    EditorXmlSavePlugins(document, theEditorXmlData);
}

void CCommon::EditorXmlSavePlugins(QDomDocument &document, const EditorXmlData &settings)
{
    const QDomElement item = firstOf(document, Section::Plugins).firstChild().toElement();
    fill(settingIn(Section::Plugins), item.attributes(), settings);
}

void CCommon::EditorXmlSaveInstallation(QDomDocument &document, const QString &version)
{
    if (!firstOf(document, Section::Installation).isNull())
        setEditorVersion(document, version);
}

void CCommon::EditorXmlSaveRibbonSet(QDomDocument &document)
{
    EditorXmlSaveRibbonSet(document, theEditorXmlData);
}

void CCommon::EditorXmlSaveRibbonSet(QDomDocument &document, const EditorXmlData &settings)
{
    if (settings.elemRibbonCategory.isNull())
        return;
    // Both are looked for first: an imported ribbon may hold elements of their names.
    QDomElement ribbonSection = firstOf(document, Section::Ribbon);
    QDomElement barSection = firstOf(document, Section::QuickAccessBar);
    ribbonSection.appendChild(document.importNode(settings.elemRibbonCategory, true));
    barSection.appendChild(document.importNode(settings.elemQuickAccessBar, true));
}

QList<_EditorXmlPuginData_> CCommon::EditorXmlReadPluginsTemplate(bool bEditor)
{
    return EditorXmlReadPluginsTemplate(Product::of(bEditor));
}

QList<_EditorXmlPuginData_> CCommon::EditorXmlReadPluginsTemplate(const Product &product)
{
    QFile file(product.pluginList);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const Result<QDomDocument> document = XmlTree::read(file.readAll());
    if (!document)
        return {};
    QList<_EditorXmlPuginData_> plugins;
    const QDomElement root = document->documentElement();
    for (QDomElement row = root.firstChildElement(QStringLiteral("Plugin")); !row.isNull();
         row = row.nextSiblingElement(QStringLiteral("Plugin"))) {
        plugins.append({row.attribute(QStringLiteral("Name")), row.attribute(QStringLiteral("PIPath")),
                        row.attribute(QStringLiteral("Description"))});
    }
    return plugins;
}
