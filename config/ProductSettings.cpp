// SPDX-License-Identifier: Apache-2.0
#include "config/ProductSettings.h"

#include "config/CCommon.h"
#include "config/DefaultPlugins.h"
#include "config/KeptElement.h"

#include <QStringList>

#include <limits>

namespace {

QString takeMarked(QStringList &marked, const QString &library)
{
    return marked.removeAll(library) > 0 ? library + QLatin1Char(';') : QString();
}

QString inDisplayOrder(const QString &unloadList, bool editor)
{
    QStringList marked = unloadList.split(QLatin1Char(';'), Qt::SkipEmptyParts);
    QString ordered;
    const auto plugins = CCommon::EditorXmlReadPluginsTemplate(editor);
    for (const _EditorXmlPuginData_ &plugin : plugins)
        ordered += takeMarked(marked, plugin.path);
    while (!marked.isEmpty())
        ordered += takeMarked(marked, QString(marked.first()));
    return ordered;
}

int attachmentModeOf(const EditorXmlData &settings)
{
    if (settings.strDisableOpenSaveFileAttach == QLatin1String("Enabled"))
        return 1;
    if (settings.strDisableOpenSaveFileAttach == QLatin1String("Disabled"))
        return 2;
    bool isNumber = false;
    const int number = settings.strDisableOpenSaveFileAttach.toInt(&isNumber);
    const bool isMode = isNumber && number >= 0 && number < std::numeric_limits<int>::max();
    return isMode ? number + 1 : settings.nFileAttachmentsMode;
}

/// The window's pages make an element even of a ribbon that is as shipped.
QDomElement ribbonElement(const QDomElement &element, const QString &tagName)
{
    return element.isNull() ? keptElement(QDomDocument().createElement(tagName)) : element;
}

void dropEditorOnly(EditorXmlData &settings)
{
    settings.bRemoveAdvertise = false;
    settings.bHideMyApps = false;
    settings.strLoginDomain = QStringLiteral("2");
    settings.strLoginDomainList.clear();
}

} // namespace

EditorXmlData settingsForProduct(EditorXmlData settings, bool editor)
{
    settings.nFileAttachmentsMode = attachmentModeOf(settings);
    settings.elemRibbonCategory = ribbonElement(settings.elemRibbonCategory, QStringLiteral("RibbonUI"));
    settings.elemQuickAccessBar =
        ribbonElement(settings.elemQuickAccessBar, QStringLiteral("QuickAccessBar"));
    settings.strUnloadPluginArray = inDisplayOrder(settings.strUnloadPluginArray, editor);
    if (!editor)
        dropEditorOnly(settings);
    return settings;
}
