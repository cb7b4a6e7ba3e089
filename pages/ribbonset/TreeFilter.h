// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QSet>

class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

/// Narrows a tree to the items whose text contains what is typed into a line, and the items above them.
/// Case does not matter; an empty line shows everything, expanded as it was before. Check states are never
/// touched. Down and Return go from the line into the tree, Escape empties the line, and the keys for
/// finding lead to the line. Owned by the line.
class TreeFilter : public QObject
{
    Q_OBJECT

public:
    TreeFilter(QLineEdit *line, QTreeWidget *tree);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void narrow(const QString &text);
    void rememberExpansion();
    void showAll();
    bool enterTree();
    bool clearLine();

    QLineEdit *const m_line;
    QTreeWidget *const m_tree;
    bool m_narrowed = false;
    QSet<QTreeWidgetItem *> m_expanded; ///< what was expanded before narrowing
};
