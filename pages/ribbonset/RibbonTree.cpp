// SPDX-License-Identifier: Apache-2.0
#include "pages/ribbonset/RibbonTree.h"

#include <QCoreApplication>
#include <QDomElement>

namespace {

QString spokenState(Qt::CheckState state)
{
    if (state == Qt::Unchecked)
        return {};
    return state == Qt::Checked ? QCoreApplication::translate("RibbonTree", "hidden")
                                : QCoreApplication::translate("RibbonTree", "hidden in part");
}

/// Says how much of it is hidden to who hears the tree: a screen reader is told of ticked rows and of others
/// only.
class Item : public QTreeWidgetItem
{
public:
    QVariant data(int column, int role) const override
    {
        return role == Qt::AccessibleDescriptionRole ? spokenState(checkState(column))
                                                     : QTreeWidgetItem::data(column, role);
    }
};

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
    auto *item = new Item;
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
