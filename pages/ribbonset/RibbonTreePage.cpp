// SPDX-License-Identifier: Apache-2.0
#include "pages/ribbonset/RibbonTreePage.h"

#include "config/EditorXmlData.h"
#include "config/RibbonDefinition.h"
#include "pages/ribbonset/HiddenItemDelegate.h"
#include "pages/ribbonset/RibbonTree.h"
#include "pages/ribbonset/TreeFilter.h"
#include "ui_RibbonTreePage.h"

#include <QScopedValueRollback>
#include <QSignalBlocker>

/// While it lives, changes in the tree are the page's own: they set off no rules, and the view looks at
/// them once at the end instead of one by one.
class RibbonTreePage::Change
{
public:
    explicit Change(RibbonTreePage &page)
        : m_flag(page.m_changing, true)
        , m_tree(page.m_ui->treeWidget)
        , m_blocker(m_tree->model())
    {
    }
    ~Change() { m_tree->viewport()->update(); }
    Q_DISABLE_COPY(Change)

private:
    const QScopedValueRollback<bool> m_flag;
    QTreeWidget *const m_tree;
    const QSignalBlocker m_blocker;
};

RibbonTreePage::RibbonTreePage(const QString &title, const QString &hint, QWidget *parent)
    : CTabWidget(parent)
    , m_ui(std::make_unique<Ui::RibbonTreePage>())
{
    m_ui->setupUi(this);
    m_ui->label->setText(hint);
    m_ui->treeWidget->setAccessibleName(title);
    m_ui->treeWidget->setAccessibleDescription(hint);
    m_ui->treeWidget->setItemDelegate(new HiddenItemDelegate(m_ui->treeWidget));
    new TreeFilter(m_ui->lineEdit_filter, m_ui->treeWidget);
    connect(m_ui->lineEdit_filter, &QLineEdit::textChanged, m_ui->label_unseen, &QLabel::hide);
    connect(m_ui->treeWidget, &QTreeWidget::itemChanged, this, &RibbonTreePage::onItemChanged);
}

RibbonTreePage::~RibbonTreePage() = default;

QTreeWidgetItem *RibbonTreePage::treeRoot() const
{
    return m_ui->treeWidget->invisibleRootItem();
}

void RibbonTreePage::BuildRibbonsetTree()
{
    m_ui->treeWidget->clear();
    const QDomDocument definition = ribbonDefinition();
    for (QDomNode node = definition.documentElement().firstChild(); !node.isNull(); node = node.nextSibling())
        parseXml(node, treeRoot());
    const Change change(*this);
    treeBuilt();
}

void RibbonTreePage::showHidden(const QDomElement &fragment)
{
    const Change change(*this);
    applyFragment(fragment);
}

void RibbonTreePage::OnBeforeSave()
{
    keepIn(theEditorXmlData);
}

void RibbonTreePage::onItemChanged(QTreeWidgetItem *item, int column)
{
    if (m_changing || column != 0)
        return;
    const Change change(*this);
    spreadState(item);
    tellOfUnseen(item);
}

/// A tick reaches below what the filter shows.
void RibbonTreePage::tellOfUnseen(QTreeWidgetItem *item)
{
    int unseen = 0;
    RibbonTree::visitBelow(item,
                           [&unseen](const QTreeWidgetItem *below) { unseen += below->isHidden() ? 1 : 0; });
    m_ui->label_unseen->setVisible(unseen > 0);
    m_ui->label_unseen->setText(
        tr("%n item(s) that the filter leaves out changed as well.", nullptr, unseen));
}
