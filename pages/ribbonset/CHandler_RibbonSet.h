// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/ICutsomizationHandler.h"
#include "pages/PageHandler.h"
#include "pages/ribbonset/tab_ribbonset.h"

#include <QCoreApplication>

/// The Ribbon Set page: which parts of the product's ribbon are hidden.
class CHandler_RibbonSet : public PageHandler<ICutsomizationHandler, tab_ribbonset>
{
    Q_DECLARE_TR_FUNCTIONS(CHandler_RibbonSet)

public:
    using PageHandler::PageHandler;

    int GetTabId() override;
    QString GetTabName() override;
    QString GetTabTitle() const override;
    QString GetTabTooltip() const override;
    QString GetTabIcon() override;
    bool SupportsProfile() override;
    QString GetInfoName() override;
    void OnBeforeSave() override;

protected:
    tab_ribbonset *makePage() const override;
    void fillPage(tab_ribbonset &page, const EditorXmlData &data) override;
};
