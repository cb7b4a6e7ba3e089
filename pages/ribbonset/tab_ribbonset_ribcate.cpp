// SPDX-License-Identifier: Apache-2.0
#include "pages/ribbonset/tab_ribbonset_ribcate.h"

#include "config/EditorXmlData.h"
#include "config/KeptElement.h"
#include "config/RibbonCommands.h"
#include "config/RibbonDefinition.h"
#include "pages/ribbonset/RibbonFragment.h"
#include "pages/ribbonset/RibbonTree.h"

tab_ribbonset_ribcate::tab_ribbonset_ribcate(QWidget *parent)
    : RibbonTreePage(tr("Ribbon Category"), tr("Mark what to hide from the ribbon:"), parent)
{
    BuildRibbonsetTree();
}

QStringList tab_ribbonset_ribcate::InitCommonActions()
{
    return RibbonCommands::commonActions();
}

void tab_ribbonset_ribcate::parseXml(const QDomNode &node, QTreeWidgetItem *parent)
{
    const QDomElement element = node.toElement();
    if (element.isNull() || !existsInProduct(element))
        return;
    QTreeWidgetItem *item = RibbonTree::newItem(element);
    for (QDomNode child = element.firstChild(); !child.isNull(); child = child.nextSibling())
        parseXml(child, item);
    // Added with all that is below it, the tree learns of it once.
    parent->addChild(item);
}

void tab_ribbonset_ribcate::treeBuilt()
{
    m_commonActions.link(treeRoot());
}

void tab_ribbonset_ribcate::spreadState(QTreeWidgetItem *item)
{
    RibbonTree::updateChildItems(item, item->checkState(0));
    m_commonActions.UpdateCommonActionState(item);
    RibbonTree::updateParentItems(item);
}

void tab_ribbonset_ribcate::applyFragment(const QDomElement &fragment)
{
    applyRibbonFragment(treeRoot(), fragment);
}

QDomDocument tab_ribbonset_ribcate::SaveToXml() const
{
    return ribbonFragment(treeRoot());
}

void tab_ribbonset_ribcate::keepIn(EditorXmlData &record) const
{
    record.elemRibbonCategory = keptElement(SaveToXml().documentElement());
}

CHandler_RibbonSet_RibCate::CHandler_RibbonSet_RibCate(bool editor)
    : SubPageHandler(Product::of(editor), {0, tr("Ribbon Category")})
{
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
