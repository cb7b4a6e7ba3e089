// SPDX-License-Identifier: Apache-2.0
#include "pages/ribbonset/CHandler_RibbonSet_TabElem.h"

#include "config/EditorXmlData.h"

int CHandler_RibbonSet_TabElem::GetTabId()
{
    return 1;
}

QString CHandler_RibbonSet_TabElem::GetTabTitle() const
{
    return tr("Quick Access Toolbar");
}

QString CHandler_RibbonSet_TabElem::GetTabTooltip()
{
    return {};
}

bool CHandler_RibbonSet_TabElem::IsOnlyForEditor()
{
    return false;
}

QString CHandler_RibbonSet_TabElem::GetInfoAnchorId()
{
    return {};
}

void CHandler_RibbonSet_TabElem::OnBeforeSave()
{
    if (page())
        page()->OnBeforeSave();
}

void CHandler_RibbonSet_TabElem::fillPage(tab_ribbonset_tabelem &page, const EditorXmlData &data)
{
    page.showHidden(data.elemQuickAccessBar);
}
