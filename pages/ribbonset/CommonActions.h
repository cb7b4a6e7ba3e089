// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

class QTreeWidgetItem;

/// Actions that several categories offer and that are hidden or shown together. The items of one action are
/// linked in pairs; each keeps a pointer to its twin (void *, RibbonTree::ownRole).
///
/// Twins, because an action is one command, wherever it stands: a tree in which it is ticked in one category
/// and not in another would promise what no document can say. Pointers, because a tick on a category asks
/// for the twins of all below it. How three of a name are linked decides what documents say, so it stays.
/// Who passes a state on must ignore the tree's signals meanwhile, or a twin would pass it back.
class CommonActions
{
public:
    explicit CommonActions(const QStringList &names);

    /// Links each item below the root with the first one of its name. With three of a name the first is
    /// linked to the third, and the second still to the first.
    void link(QTreeWidgetItem *root) const;

    /// Gives the twins of this item and of all items below it the state of the item they are linked
    /// with, together with what lies below and above the twins.
    void UpdateCommonActionState(QTreeWidgetItem *item) const;

private:
    void updateTwin(const QTreeWidgetItem *item) const;

    const QSet<QString> m_names;
};

/// The item that this one is linked with, or null.
QTreeWidgetItem *twinOf(const QTreeWidgetItem *item);
