// SPDX-License-Identifier: Apache-2.0
#include "pages/ribbonset/CHandler_RibbonSet_RibCate.h"

#include "config/EditorXmlData.h"

int CHandler_RibbonSet_RibCate::GetTabId()
{
    return 0;
}

QString CHandler_RibbonSet_RibCate::GetTabTitle() const
{
    return tr("Ribbon Category");
}

QString CHandler_RibbonSet_RibCate::GetTabTooltip()
{
    return {};
}

bool CHandler_RibbonSet_RibCate::IsOnlyForEditor()
{
    return false;
}

QString CHandler_RibbonSet_RibCate::GetInfoAnchorId()
{
    return {};
}

void CHandler_RibbonSet_RibCate::OnBeforeSave()
{
    if (page())
        page()->OnBeforeSave();
}

void CHandler_RibbonSet_RibCate::fillPage(tab_ribbonset_ribcate &page, const EditorXmlData &data)
{
    page.showHidden(data.elemRibbonCategory);
}
