// SPDX-License-Identifier: Apache-2.0
#include "pages/ribbonset/TreeFilter.h"

#include "pages/ribbonset/RibbonTree.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QShortcut>
#include <QTreeWidget>

namespace {

/// Shows the item when it or one below it matches, and whether it is shown.
bool showIfMatching(QTreeWidgetItem *item, const QString &text)
{
    bool matchesBelow = false;
    for (int i = 0; i < item->childCount(); ++i)
        matchesBelow = showIfMatching(item->child(i), text) || matchesBelow;
    const bool shown = matchesBelow || item->text(0).contains(text, Qt::CaseInsensitive);
    item->setHidden(!shown);
    item->setExpanded(matchesBelow);
    return shown;
}

} // namespace

TreeFilter::TreeFilter(QLineEdit *line, QTreeWidget *tree)
    : QObject(line)
    , m_line(line)
    , m_tree(tree)
{
    connect(line, &QLineEdit::textChanged, this, &TreeFilter::narrow);
    line->installEventFilter(this);
    auto *find = new QShortcut(QKeySequence::Find, line);
    connect(find, &QShortcut::activated, line, [line] {
        line->setFocus(Qt::ShortcutFocusReason);
        line->selectAll();
    });
}

void TreeFilter::narrow(const QString &text)
{
    const QString wanted = text.trimmed();
    if (wanted.isEmpty()) {
        showAll();
        return;
    }
    rememberExpansion();
    QTreeWidgetItem *root = m_tree->invisibleRootItem();
    for (int i = 0; i < root->childCount(); ++i)
        showIfMatching(root->child(i), wanted);
}

void TreeFilter::rememberExpansion()
{
    if (m_narrowed)
        return;
    m_narrowed = true;
    m_expanded.clear();
    RibbonTree::visitBelow(m_tree->invisibleRootItem(), [this](QTreeWidgetItem *item) {
        if (item->isExpanded())
            m_expanded.insert(item);
    });
}

void TreeFilter::showAll()
{
    if (!m_narrowed)
        return;
    m_narrowed = false;
    RibbonTree::visitBelow(m_tree->invisibleRootItem(), [this](QTreeWidgetItem *item) {
        item->setHidden(false);
        item->setExpanded(m_expanded.contains(item));
    });
    m_tree->scrollToItem(m_tree->currentItem());
}

bool TreeFilter::enterTree()
{
    const QTreeWidgetItem *current = m_tree->currentItem();
    if (!current || current->isHidden()) {
        QTreeWidgetItem *first = *QTreeWidgetItemIterator(m_tree, QTreeWidgetItemIterator::NotHidden);
        if (!first)
            return true;
        m_tree->setCurrentItem(first);
    }
    m_tree->setFocus(Qt::TabFocusReason);
    return true;
}

bool TreeFilter::clearLine()
{
    if (m_line->text().isEmpty())
        return false;
    m_line->clear();
    return true;
}

bool TreeFilter::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return QObject::eventFilter(watched, event);
    switch (static_cast<QKeyEvent *>(event)->key()) {
    case Qt::Key_Down:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return enterTree();
    case Qt::Key_Escape:
        return clearLine();
    default:
        return QObject::eventFilter(watched, event);
    }
}
