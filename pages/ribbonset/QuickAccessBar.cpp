// SPDX-License-Identifier: Apache-2.0
#include "pages/ribbonset/QuickAccessBar.h"

#include "pages/ribbonset/RibbonTree.h"

#include <QDomDocument>
#include <QHash>

namespace {

using RibbonTree::nameOf;
using ItemsByName = QHash<QString, QVector<QTreeWidgetItem *>>;

const QString rootTag = QStringLiteral("QuickAccessBar");
const QString controlTag = QStringLiteral("control");
const QString actionAttribute = QStringLiteral("action");
const QString pageAttribute = QStringLiteral("page");
const QString groupAttribute = QStringLiteral("group");
const QString otherGroup = QStringLiteral("Other");

/// The bar and the File category stand outside the pages of the ribbon.
bool isOutsideThePages(const QTreeWidgetItem *parent)
{
    const QString name = nameOf(parent);
    return name == QLatin1String("TabElements") || name == QLatin1String("Ribbon_Page_Bar");
}

QDomElement controlElement(const QTreeWidgetItem *item, QDomDocument &document)
{
    const bool other = isOutsideThePages(item->parent());
    const QString group = item->data(0, RibbonTree::ownRole).toString();
    QDomElement control = document.createElement(controlTag);
    control.setAttribute(actionAttribute, nameOf(item));
    control.setAttribute(pageAttribute, other ? otherGroup : nameOf(item->parent()));
    control.setAttribute(groupAttribute, other ? otherGroup : group);
    return control;
}

bool isAt(const QTreeWidgetItem *item, const QString &page, const QString &group)
{
    const QTreeWidgetItem *parent = item->parent();
    if (group == otherGroup)
        return isOutsideThePages(parent);
    const QTreeWidgetItem *grandparent = parent->parent();
    if (!grandparent)
        return nameOf(parent) == group || nameOf(parent) == page;
    return nameOf(parent) == group && nameOf(grandparent) == page;
}

/// The items that a control can mean, in tree order.
ItemsByName itemsByName(QTreeWidgetItem *root)
{
    ItemsByName items;
    RibbonTree::visitBelow(root, [&](QTreeWidgetItem *item) {
        if (item->parent())
            items[nameOf(item)].append(item);
    });
    return items;
}

QTreeWidgetItem *itemFor(const QDomElement &control, const ItemsByName &items)
{
    const QString page = control.attribute(pageAttribute);
    const QString group = control.attribute(groupAttribute);
    for (QTreeWidgetItem *item : items.value(control.attribute(actionAttribute))) {
        if (isAt(item, page, group))
            return item;
    }
    return nullptr;
}

void checkAndReveal(QTreeWidgetItem *item)
{
    item->setCheckState(0, Qt::Checked);
    for (QTreeWidgetItem *above = item->parent(); above; above = above->parent())
        above->setExpanded(true);
}

} // namespace

QDomDocument quickAccessFragment(QTreeWidgetItem *root)
{
    QDomDocument document;
    QDomElement bar = document.createElement(rootTag);
    document.appendChild(bar);
    RibbonTree::visitBelow(root, [&](const QTreeWidgetItem *item) {
        // An empty category is no control.
        if (RibbonTree::isChecked(item) && item->childCount() == 0 && item->parent())
            bar.appendChild(controlElement(item, document));
    });
    return document;
}

void applyQuickAccessFragment(QTreeWidgetItem *root, const QDomElement &fragment)
{
    RibbonTree::updateChildItems(root, Qt::Unchecked);
    if (fragment.tagName() != rootTag)
        return;
    const ItemsByName items = itemsByName(root);
    for (QDomElement control = fragment.firstChildElement(controlTag); !control.isNull();
         control = control.nextSiblingElement(controlTag)) {
        if (QTreeWidgetItem *item = itemFor(control, items))
            checkAndReveal(item);
    }
    for (int i = 0; i < root->childCount(); ++i) {
        if (root->child(i)->childCount() > 0)
            RibbonTree::updateParentItems(root->child(i)->child(0));
    }
}
