// SPDX-License-Identifier: Apache-2.0
#include "pages/plugins/tab_plugins.h"

#include "config/CCommon.h"
#include "config/EditorXmlData.h"
#include "pages/PXCheckBox.h"
#include "ui_tab_plugins.h"

#include <QAction>
#include <QKeyEvent>
#include <QShortcut>

#include <utility>

namespace {

constexpr int pathRole = Qt::UserRole + 1;
constexpr int rowHeight = 28;

bool isMarked(const PXCheckBox *box)
{
    return box && box->checkState() == Qt::Checked && !box->text().isEmpty();
}

} // namespace

tab_plugins::tab_plugins(bool editor, QWidget *parent)
    : CTabWidget(parent)
    , m_ui(std::make_unique<Ui::tab_plugins>())
{
    m_ui->setupUi(this);
    m_ui->listWidget_pluginList->viewport()->installEventFilter(this);
    m_ui->lineEdit_filter->installEventFilter(this);
    connect(m_ui->lineEdit_filter, &QLineEdit::textChanged, this, &tab_plugins::narrow);
    auto *find = new QShortcut(QKeySequence::Find, m_ui->lineEdit_filter);
    connect(find, &QShortcut::activated, m_ui->lineEdit_filter,
            [this] { m_ui->lineEdit_filter->setFocus(); });
    setContextMenuPolicy(Qt::ActionsContextMenu);
    addMarkAction(tr("Mark All"), QKeySequence(QStringLiteral("Ctrl+Shift+A")), [](bool) { return true; });
    addMarkAction(tr("Mark None"), QKeySequence(QStringLiteral("Ctrl+Shift+N")), [](bool) { return false; });
    addMarkAction(tr("Invert Marks"), QKeySequence(QStringLiteral("Ctrl+Shift+I")),
                  [](bool isMarked) { return !isMarked; });
    EditorXmlInitPluginList(editor);
    showCount();
}

tab_plugins::~tab_plugins() = default;

void tab_plugins::EditorXmlInitPluginList(bool editor)
{
    m_plugins = CCommon::EditorXmlReadPluginsTemplate(editor);
    for (const _EditorXmlPuginData_ &plugin : std::as_const(m_plugins))
        appendRow(plugin);
    fitRows();
    fitHeight();
}

/// The page scrolls as a whole, so that the focus never moves out of sight inside the list.
void tab_plugins::fitHeight()
{
    QListWidget *list = m_ui->listWidget_pluginList;
    int rows = 0;
    for (int i = 0; i < list->count(); ++i)
        rows += list->item(i)->isHidden() ? 0 : 1;
    list->setFixedHeight(rows * rowHeight + 2 * list->frameWidth());
}

/// For the rows that the filter shows; what cannot be seen is not changed.
void tab_plugins::addMarkAction(const QString &text, const QKeySequence &keys,
                                const std::function<bool(bool isMarked)> &change)
{
    auto *action = new QAction(text, this);
    action->setShortcut(keys);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addAction(action);
    connect(action, &QAction::triggered, this, [this, change] {
        for (int i = 0; i < m_ui->listWidget_pluginList->count(); ++i) {
            QListWidgetItem *row = m_ui->listWidget_pluginList->item(i);
            PXCheckBox *box = checkBoxOf(row);
            if (!row->isHidden())
                box->setCheckState(change(box->checkState() == Qt::Checked) ? Qt::Checked : Qt::Unchecked);
        }
    });
}

void tab_plugins::narrow(const QString &text)
{
    for (int i = 0; i < m_ui->listWidget_pluginList->count(); ++i) {
        QListWidgetItem *row = m_ui->listWidget_pluginList->item(i);
        row->setHidden(!checkBoxOf(row)->text().contains(text.trimmed(), Qt::CaseInsensitive));
    }
    fitHeight();
}

void tab_plugins::showCount()
{
    int marked = 0;
    const int all = m_ui->listWidget_pluginList->count();
    for (int i = 0; i < all; ++i)
        marked += isMarked(checkBoxOf(m_ui->listWidget_pluginList->item(i))) ? 1 : 0;
    m_ui->label_count->setText(tr("%1 of %n are not loaded", nullptr, all).arg(marked));
}

QString tab_plugins::EditorXmlGetPluginList() const
{
    QString paths;
    for (int i = 0; i < m_ui->listWidget_pluginList->count(); ++i) {
        QListWidgetItem *row = m_ui->listWidget_pluginList->item(i);
        const QVariant path = row->data(pathRole);
        if (isMarked(checkBoxOf(row)) && path.canConvert<QString>())
            paths += path.toString() + QLatin1Char(';');
    }
    return paths;
}

void tab_plugins::markPlugins(const QStringList &paths)
{
    for (int i = 0; i < m_ui->listWidget_pluginList->count(); ++i) {
        QListWidgetItem *row = m_ui->listWidget_pluginList->item(i);
        if (paths.contains(row->data(pathRole).toString()))
            checkBoxOf(row)->setCheckState(Qt::Checked);
    }
}

bool tab_plugins::eventFilter(QObject *watched, QEvent *event)
{
    // A help panel beside the list takes room from it without the page itself changing its size.
    if (event->type() == QEvent::Resize)
        fitRows();
    const bool isEscape =
        event->type() == QEvent::KeyPress && static_cast<QKeyEvent *>(event)->matches(QKeySequence::Cancel);
    if (isEscape && watched == m_ui->lineEdit_filter && !m_ui->lineEdit_filter->text().isEmpty()) {
        m_ui->lineEdit_filter->clear();
        return true;
    }
    return CTabWidget::eventFilter(watched, event);
}

void tab_plugins::fitRows()
{
    const QListWidget *list = m_ui->listWidget_pluginList;
    const QSize size(list->viewport()->width(), rowHeight);
    for (int i = 0; i < list->count(); ++i)
        list->item(i)->setSizeHint(size);
}

void tab_plugins::appendRow(const _EditorXmlPuginData_ &plugin)
{
    QListWidget *list = m_ui->listWidget_pluginList;
    auto *row = new QListWidgetItem(list);
    row->setData(pathRole, plugin.path);
    row->setToolTip(plugin.description);
    row->setData(Qt::AccessibleTextRole, plugin.name);
    auto *box = new PXCheckBox(plugin.name);
    box->setAccessibleDescription(plugin.description);
    connect(box, &PXCheckBox::toggled, this, [this, row](bool isMarked) {
        row->setData(Qt::AccessibleDescriptionRole, isMarked ? tr("not loaded") : QString());
        showCount();
    });
    list->setItemWidget(row, box);
}

PXCheckBox *tab_plugins::checkBoxOf(QListWidgetItem *row) const
{
    return qobject_cast<PXCheckBox *>(m_ui->listWidget_pluginList->itemWidget(row));
}

CHandler_Plugins::CHandler_Plugins(bool editor)
    : MainPageHandler(Product::of(editor),
                      {5, tr("Plugins"), QStringLiteral("Plugins.html"), PageFacts::Products::Both,
                       QStringLiteral("Plugins"), tr("Allow you to configure settings regarding plugins."),
                       QStringLiteral(":/img/plugins.png")})
{
}

QVariant CHandler_Plugins::GetProperty(const QString &objectName)
{
    if (page() && objectName == QLatin1String("listWidget_pluginList"))
        return page()->EditorXmlGetPluginList();
    return ICutsomizationHandler::GetProperty(objectName);
}

void CHandler_Plugins::fillPage(tab_plugins &page, const EditorXmlData &data)
{
    page.markPlugins(data.strUnloadPluginArray.split(QLatin1Char(';'), Qt::SkipEmptyParts));
}
