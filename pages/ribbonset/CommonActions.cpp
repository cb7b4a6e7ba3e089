// SPDX-License-Identifier: Apache-2.0
#include "pages/ribbonset/CommonActions.h"

#include "pages/ribbonset/RibbonTree.h"

#include <QHash>

namespace {

void setTwin(QTreeWidgetItem *item, QTreeWidgetItem *twin)
{
    item->setData(0, RibbonTree::ownRole, QVariant::fromValue<void *>(twin));
}

} // namespace

QTreeWidgetItem *twinOf(const QTreeWidgetItem *item)
{
    return static_cast<QTreeWidgetItem *>(item->data(0, RibbonTree::ownRole).value<void *>());
}

CommonActions::CommonActions(const QStringList &names)
    : m_names(names.begin(), names.end())
{
}

void CommonActions::link(QTreeWidgetItem *root) const
{
    QHash<QString, QTreeWidgetItem *> firstOfName;
    RibbonTree::visitBelow(root, [&](QTreeWidgetItem *item) {
        const QString name = RibbonTree::nameOf(item);
        if (!m_names.contains(name))
            return;
        QTreeWidgetItem *&first = firstOfName[name];
        if (!first) {
            first = item;
            return;
        }
        setTwin(item, first);
        setTwin(first, item);
    });
}

void CommonActions::UpdateCommonActionState(QTreeWidgetItem *item) const
{
    updateTwin(item);
    RibbonTree::visitBelow(item, [this](const QTreeWidgetItem *below) { updateTwin(below); });
}

void CommonActions::updateTwin(const QTreeWidgetItem *item) const
{
    QTreeWidgetItem *twin = twinOf(item);
    if (!twin || !m_names.contains(RibbonTree::nameOf(item)))
        return;
    twin->setCheckState(0, item->checkState(0));
    RibbonTree::updateChildItems(twin, item->checkState(0));
    RibbonTree::updateParentItems(twin);
}
