// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/IRibbonSetHandler.h"
#include "pages/PageHandler.h"
#include "pages/ribbonset/tab_ribbonset_ribcate.h"

#include <QCoreApplication>

/// The Ribbon Category sub-page.
class CHandler_RibbonSet_RibCate : public PageHandler<IRibbonSetHandler, tab_ribbonset_ribcate>
{
    Q_DECLARE_TR_FUNCTIONS(CHandler_RibbonSet_RibCate)

public:
    using PageHandler::PageHandler;

    int GetTabId() override;
    QString GetTabTitle() const override;
    QString GetTabTooltip() override;
    bool IsOnlyForEditor() override;
    QString GetInfoAnchorId() override;
    void OnBeforeSave() override;

protected:
    void fillPage(tab_ribbonset_ribcate &page, const EditorXmlData &data) override;
};
