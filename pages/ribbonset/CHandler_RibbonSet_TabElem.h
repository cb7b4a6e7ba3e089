// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/IRibbonSetHandler.h"
#include "pages/PageHandler.h"
#include "pages/ribbonset/tab_ribbonset_tabelem.h"

#include <QCoreApplication>

/// The Quick Access Toolbar sub-page.
class CHandler_RibbonSet_TabElem : public PageHandler<IRibbonSetHandler, tab_ribbonset_tabelem>
{
    Q_DECLARE_TR_FUNCTIONS(CHandler_RibbonSet_TabElem)

public:
    using PageHandler::PageHandler;

    int GetTabId() override;
    QString GetTabTitle() const override;
    QString GetTabTooltip() override;
    bool IsOnlyForEditor() override;
    QString GetInfoAnchorId() override;
    void OnBeforeSave() override;

protected:
    void fillPage(tab_ribbonset_tabelem &page, const EditorXmlData &data) override;
};
