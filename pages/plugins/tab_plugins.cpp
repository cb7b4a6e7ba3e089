// SPDX-License-Identifier: Apache-2.0
#include "pages/plugins/tab_plugins.h"

#include "config/CCommon.h"
#include "config/EditorXmlData.h"
#include "pages/PXCheckBox.h"
#include "ui_tab_plugins.h"

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
    EditorXmlInitPluginList(editor);
}

tab_plugins::~tab_plugins() = default;

void tab_plugins::EditorXmlInitPluginList(bool editor)
{
    m_plugins = CCommon::EditorXmlReadPluginsTemplate(editor);
    for (const _EditorXmlPuginData_ &plugin : std::as_const(m_plugins))
        appendRow(plugin);
    fitRows();
    // The page scrolls as a whole, so that the focus never moves out of sight inside the list.
    QListWidget *list = m_ui->listWidget_pluginList;
    list->setFixedHeight(list->count() * rowHeight + 2 * list->frameWidth());
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
    auto *box = new PXCheckBox(plugin.name);
    box->setAccessibleDescription(plugin.description);
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
