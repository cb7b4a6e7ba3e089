// SPDX-License-Identifier: Apache-2.0
#include "pages/plugins/CHandler_Plugins.h"

#include "config/EditorXmlData.h"
#include "pages/HelpPage.h"

int CHandler_Plugins::GetTabId()
{
    return 5;
}

QString CHandler_Plugins::GetTabName()
{
    return QStringLiteral("Plugins");
}

QString CHandler_Plugins::GetTabTitle() const
{
    return tr("Plugins");
}

QString CHandler_Plugins::GetTabTooltip() const
{
    return tr("Allow you to configure settings regarding plugins.");
}

QString CHandler_Plugins::GetTabIcon()
{
    return QStringLiteral(":/img/plugins.png");
}

bool CHandler_Plugins::SupportsProfile()
{
    return true;
}

QVariant CHandler_Plugins::GetProperty(const QString &objectName)
{
    if (page() && objectName == QLatin1String("listWidget_pluginList"))
        return page()->EditorXmlGetPluginList();
    return ICutsomizationHandler::GetProperty(objectName);
}

QString CHandler_Plugins::GetInfoName()
{
    return encodedHelpPage(QStringLiteral("Plugins.html"));
}

void CHandler_Plugins::fillPage(tab_plugins &page, const EditorXmlData &data)
{
    page.markPlugins(data.strUnloadPluginArray.split(QLatin1Char(';'), Qt::SkipEmptyParts));
}
