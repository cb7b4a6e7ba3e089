// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/ICutsomizationHandler.h"
#include "pages/PageHandler.h"
#include "pages/plugins/tab_plugins.h"

#include <QCoreApplication>

/// The Plugins page: which of the product's plug-ins are not to be loaded.
class CHandler_Plugins : public PageHandler<ICutsomizationHandler, tab_plugins>
{
    Q_DECLARE_TR_FUNCTIONS(CHandler_Plugins)

public:
    using PageHandler::PageHandler;

    int GetTabId() override;
    QString GetTabName() override;
    QString GetTabTitle() const override;
    QString GetTabTooltip() const override;
    QString GetTabIcon() override;
    bool SupportsProfile() override;
    /// For "listWidget_pluginList" the marked plug-ins as EditorXmlGetPluginList gives them.
    QVariant GetProperty(const QString &objectName) override;
    QString GetInfoName() override;

protected:
    void fillPage(tab_plugins &page, const EditorXmlData &data) override;
};
