// SPDX-License-Identifier: Apache-2.0
#include "RibbonItems.h"

#include "config/CCommon.h"
#include "pages/ribbonset/RibbonTree.h"

namespace {

QString pathOf(const QTreeWidgetItem *item, const QTreeWidgetItem *root)
{
    QStringList names;
    for (; item && item != root; item = item->parent())
        names.prepend(RibbonTree::nameOf(item));
    return names.join(QLatin1Char('/'));
}

} // namespace

void configureProduct(bool editor)
{
    CCommon::SetPCWAppType(editor ? PCW_APP_EDITOR : PCW_APP_READER);
}

QTreeWidgetItem *itemAt(QTreeWidgetItem *root, const QStringList &path)
{
    QTreeWidgetItem *item = root;
    for (const QString &name : path) {
        if (item)
            item = RibbonTree::childNamed(item, name);
    }
    return item;
}

QVector<QTreeWidgetItem *> itemsBelow(QTreeWidgetItem *root)
{
    QVector<QTreeWidgetItem *> items;
    RibbonTree::visitBelow(root, [&](QTreeWidgetItem *item) { items.append(item); });
    return items;
}

QTreeWidgetItem *itemIn(QTreeWidgetItem *root, const QString &category, const QString &name)
{
    QTreeWidgetItem *top = itemAt(root, {category});
    if (!top)
        return nullptr;
    for (QTreeWidgetItem *item : itemsBelow(top)) {
        if (RibbonTree::nameOf(item) == name)
            return item;
    }
    return nullptr;
}

QSet<QString> hiddenPaths(QTreeWidgetItem *root)
{
    QSet<QString> paths;
    for (const QTreeWidgetItem *item : itemsBelow(root)) {
        if (RibbonTree::isChecked(item))
            paths.insert(pathOf(item, root));
    }
    return paths;
}

QDomElement parsed(QDomDocument &document, const QString &xml)
{
    return document.setContent(xml) ? document.documentElement() : QDomElement();
}
