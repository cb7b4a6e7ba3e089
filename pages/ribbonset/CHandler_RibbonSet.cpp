// SPDX-License-Identifier: Apache-2.0
#include "pages/ribbonset/CHandler_RibbonSet.h"

#include "pages/ribbonset/CHandler_RibbonSet_RibCate.h"
#include "pages/ribbonset/CHandler_RibbonSet_TabElem.h"

int CHandler_RibbonSet::GetTabId()
{
    return 4;
}

QString CHandler_RibbonSet::GetTabName()
{
    return QStringLiteral("Ribbon Set");
}

QString CHandler_RibbonSet::GetTabTitle() const
{
    return tr("Ribbon Set");
}

QString CHandler_RibbonSet::GetTabTooltip() const
{
    return tr("Allow you to hide features from the Ribbon.");
}

QString CHandler_RibbonSet::GetTabIcon()
{
    return QStringLiteral(":/img/ribbon-set.png");
}

bool CHandler_RibbonSet::SupportsProfile()
{
    return true;
}

QString CHandler_RibbonSet::GetInfoName()
{
    return {};
}

void CHandler_RibbonSet::OnBeforeSave()
{
    if (page())
        page()->OnBeforeSave();
}

tab_ribbonset *CHandler_RibbonSet::makePage() const
{
    auto *made = new tab_ribbonset(isEditor(), nullptr);
    made->Register(std::make_shared<CHandler_RibbonSet_RibCate>(isEditor()));
    made->Register(std::make_shared<CHandler_RibbonSet_TabElem>(isEditor()));
    return made;
}

void CHandler_RibbonSet::fillPage(tab_ribbonset &page, const EditorXmlData &data)
{
    page.ImportProperty(data);
}
