// SPDX-License-Identifier: Apache-2.0
#include "config/CCommon.h"
#include "core/Logging.h"

#include <QLayout>
#include <QWidget>

#include <vector>

namespace {

bool isMarkedForEditor(const QWidget &control)
{
    return control.styleSheet().contains(QLatin1String("apptype:onlyeditor;"));
}

std::vector<QLayout *> rowsOf(const QLayout &layout)
{
    std::vector<QLayout *> rows;
    for (int i = 0; i < layout.count(); ++i) {
        if (QLayout *row = layout.itemAt(i)->layout())
            rows.push_back(row);
    }
    return rows;
}

/// Spacers do not count: they keep a gap open and show nothing.
bool isEmptied(const QLayout &layout)
{
    for (int i = 0; i < layout.count(); ++i) {
        if (!layout.itemAt(i)->spacerItem())
            return false;
    }
    return true;
}

void removeRow(QLayout *row)
{
    static_cast<QLayout *>(row->parent())->removeItem(row);
    delete row;
}

void removeFromRow(QLayout &row, const std::vector<QWidget *> &hidden, std::vector<QLayout *> &emptied)
{
    const int countBefore = row.count();
    std::vector<QLayout *> emptiedInside;
    for (QLayout *inner : rowsOf(row))
        removeFromRow(*inner, hidden, emptiedInside);
    for (QLayout *inner : emptiedInside)
        removeRow(inner);
    for (QWidget *control : hidden)
        row.removeWidget(control);
    if (row.count() < countBefore && isEmptied(row))
        emptied.push_back(&row);
}

void removeFromLayout(QLayout &layout, const std::vector<QWidget *> &hidden, std::vector<QLayout *> &emptied)
{
    for (QLayout *row : rowsOf(layout))
        removeFromRow(*row, hidden, emptied);
    for (QWidget *control : hidden)
        layout.removeWidget(control);
}

/// Hides what is marked below the node and collects the rows that have nothing left to show.
void traverseWidgetsTree(QWidget *node, bool editor, std::vector<QLayout *> &emptied, int depth)
{
    std::vector<QWidget *> hidden;
    for (QObject *object : node->children()) {
        auto *child = qobject_cast<QWidget *>(object);
        if (!child)
            continue;
        if (!editor && isMarkedForEditor(*child)) {
            qCDebug(logPages) << "hidden from the Reader:" << child->objectName() << "at depth" << depth;
            child->hide();
            hidden.push_back(child);
        }
        traverseWidgetsTree(child, editor, emptied, depth + 1);
    }
    if (node->layout() && !hidden.empty())
        removeFromLayout(*node->layout(), hidden, emptied);
}

} // namespace

void CCommon::ReLayout(QWidget *page, bool bEditor)
{
    if (!page || !page->layout())
        return;
    std::vector<QLayout *> emptied;
    traverseWidgetsTree(page, bEditor, emptied, 0);
    for (QLayout *row : emptied)
        removeRow(row);
}
