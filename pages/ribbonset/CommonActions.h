// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

class QTreeWidgetItem;

/// Actions that several categories offer and that are hidden or shown together. The items of one action are
/// linked in pairs; each keeps a pointer to its twin (void *, RibbonTree::ownRole).
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
