// SPDX-License-Identifier: Apache-2.0
#include "pages/ribbonset/RibbonTree.h"

#include <QDomElement>

namespace {

Qt::CheckState stateOfChildren(const QTreeWidgetItem *parent)
{
    bool allChecked = true;
    bool allUnchecked = true;
    for (int i = 0; i < parent->childCount(); ++i) {
        const Qt::CheckState state = parent->child(i)->checkState(0);
        allChecked = allChecked && state == Qt::Checked;
        allUnchecked = allUnchecked && state == Qt::Unchecked;
    }
    if (allChecked)
        return Qt::Checked;
    return allUnchecked ? Qt::Unchecked : Qt::PartiallyChecked;
}

} // namespace

QTreeWidgetItem *RibbonTree::newItem(const QDomElement &element)
{
    auto *item = new QTreeWidgetItem;
    item->setText(0, element.attribute(QStringLiteral("Title")));
    item->setData(0, nameRole, element.attribute(QStringLiteral("Name")));
    item->setCheckState(0, Qt::Unchecked);
    return item;
}

QString RibbonTree::nameOf(const QTreeWidgetItem *item)
{
    return item->data(0, nameRole).toString();
}

bool RibbonTree::isChecked(const QTreeWidgetItem *item)
{
    return item->checkState(0) == Qt::Checked;
}

QTreeWidgetItem *RibbonTree::childNamed(const QTreeWidgetItem *parent, const QString &name)
{
    for (int i = 0; i < parent->childCount(); ++i) {
        if (nameOf(parent->child(i)) == name)
            return parent->child(i);
    }
    return nullptr;
}

void RibbonTree::updateChildItems(QTreeWidgetItem *item, Qt::CheckState state)
{
    visitBelow(item, [state](QTreeWidgetItem *below) { below->setCheckState(0, state); });
}

void RibbonTree::updateParentItems(QTreeWidgetItem *item)
{
    for (QTreeWidgetItem *parent = item->parent(); parent; parent = parent->parent())
        parent->setCheckState(0, stateOfChildren(parent));
}

bool RibbonTree::hasAnyCheckedChild(const QTreeWidgetItem *item)
{
    for (int i = 0; i < item->childCount(); ++i) {
        if (isChecked(item->child(i)) || hasAnyCheckedChild(item->child(i)))
            return true;
    }
    return false;
}

void RibbonTree::showPartlyHidden(QTreeWidgetItem *root)
{
    visitBelow(root, [](QTreeWidgetItem *item) {
        if (!isChecked(item) && hasAnyCheckedChild(item))
            item->setCheckState(0, Qt::PartiallyChecked);
    });
}
