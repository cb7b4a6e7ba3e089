// SPDX-License-Identifier: Apache-2.0
#include "pages/ribbonset/tab_ribbonset_tabelem.h"

#include "config/EditorXmlData.h"
#include "config/KeptElement.h"
#include "config/RibbonDefinition.h"
#include "pages/ribbonset/QuickAccessBar.h"
#include "pages/ribbonset/RibbonTree.h"

namespace {

/// They belong to the window's frame and cannot be taken off the bar.
bool isFixed(const QDomElement &control)
{
    const QString name = control.attribute(QStringLiteral("Name"));
    return name == QLatin1String("Ribbonbar_Search") || name == QLatin1String("PelixAccount");
}

/// Adds the controls that stand in a panel or in the bar itself.
void addControls(QTreeWidgetItem *parent, const QDomElement &group)
{
    const QString tag = QStringLiteral("Control");
    for (QDomElement control = group.firstChildElement(tag); !control.isNull();
         control = control.nextSiblingElement(tag)) {
        if (!existsInProduct(control) || isFixed(control))
            continue;
        QTreeWidgetItem *item = RibbonTree::newItem(control);
        item->setData(0, RibbonTree::ownRole, group.attribute(QStringLiteral("Name")));
        parent->addChild(item);
    }
}

void addPanels(QTreeWidgetItem *parent, const QDomElement &category)
{
    const QString tag = QStringLiteral("Panel");
    for (QDomElement panel = category.firstChildElement(tag); !panel.isNull();
         panel = panel.nextSiblingElement(tag)) {
        if (existsInProduct(panel))
            addControls(parent, panel);
    }
}

} // namespace

tab_ribbonset_tabelem::tab_ribbonset_tabelem(QWidget *parent)
    : RibbonTreePage(tr("Quick Access Toolbar"), tr("Mark what to hide from the quick access toolbar:"),
                     parent)
{
    BuildRibbonsetTree();
}

void tab_ribbonset_tabelem::parseXml(const QDomNode &node, QTreeWidgetItem *parent)
{
    const QDomElement element = node.toElement();
    const bool isBar = element.tagName() == QLatin1String("TabElements");
    const bool isCategory = element.tagName() == QLatin1String("Category");
    if ((!isBar && !isCategory) || !existsInProduct(element))
        return;
    QTreeWidgetItem *item = RibbonTree::newItem(element);
    if (isBar)
        addControls(item, element);
    else
        addPanels(item, element);
    parent->addChild(item);
}

void tab_ribbonset_tabelem::spreadState(QTreeWidgetItem *item)
{
    RibbonTree::updateChildItems(item, item->checkState(0));
    RibbonTree::updateParentItems(item);
}

void tab_ribbonset_tabelem::applyFragment(const QDomElement &fragment)
{
    applyQuickAccessFragment(treeRoot(), fragment);
}

QDomDocument tab_ribbonset_tabelem::SaveToXml() const
{
    return quickAccessFragment(treeRoot());
}

void tab_ribbonset_tabelem::keepIn(EditorXmlData &record) const
{
    record.elemQuickAccessBar = keptElement(SaveToXml().documentElement());
}

CHandler_RibbonSet_TabElem::CHandler_RibbonSet_TabElem(bool editor)
    : SubPageHandler(Product::of(editor), {1, tr("Quick Access Toolbar")})
{
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
