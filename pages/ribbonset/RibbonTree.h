// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QTreeWidgetItem>

class QDomElement;

/// The items of both ribbon trees and the rules of their check states. A ticked item is one to hide. Works
/// on items with or without a tree around them.
namespace RibbonTree {

constexpr int nameRole = Qt::UserRole; ///< QString: what the product calls the element
constexpr int ownRole = nameRole + 1;  ///< what each of the trees keeps beside it

/// A new unticked item for an element of the ribbon definition; owned by the caller.
QTreeWidgetItem *newItem(const QDomElement &element);

QString nameOf(const QTreeWidgetItem *item);
bool isChecked(const QTreeWidgetItem *item);

/// The first child with that name, or null.
QTreeWidgetItem *childNamed(const QTreeWidgetItem *parent, const QString &name);

/// Gives every item below this one the state.
void updateChildItems(QTreeWidgetItem *item, Qt::CheckState state);

/// Makes each item above this one checked, unchecked or partially checked as its children are.
void updateParentItems(QTreeWidgetItem *item);

/// Whether any item below this one, at any depth, is checked.
bool hasAnyCheckedChild(const QTreeWidgetItem *item);

/// Makes each unchecked item below this one that has checked items below it partially checked. Unlike
/// updateParentItems it never checks an item, so that what is hidden stays as it is.
void showPartlyHidden(QTreeWidgetItem *root);

/// Calls the visitor for every item below the root, from top to bottom as people read the tree.
template <class Visitor> void visitBelow(QTreeWidgetItem *root, const Visitor &visitor)
{
    for (int i = 0; i < root->childCount(); ++i) {
        QTreeWidgetItem *item = root->child(i);
        visitor(item);
        visitBelow(item, visitor);
    }
}

} // namespace RibbonTree
