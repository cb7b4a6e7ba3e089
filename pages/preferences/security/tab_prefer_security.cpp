// SPDX-License-Identifier: Apache-2.0
#include "pages/preferences/security/tab_prefer_security.h"

#include "config/EditorXmlData.h"
#include "pages/EnteredText.h"
#include "pages/preferences/security/FileTypeTable.h"
#include "pages/SharpPicture.h"
#include "ui_tab_prefer_security.h"

#include <QStyledItemDelegate>

namespace {

/// Edits a level by choosing among its words.
class LevelDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &, const QModelIndex &) const override
    {
        auto *list = new QComboBox(parent);
        list->addItems(FileTypeTable::levels());
        return list;
    }

    void setEditorData(QWidget *editor, const QModelIndex &index) const override
    {
        qobject_cast<QComboBox *>(editor)->setCurrentIndex(index.data(Qt::EditRole).toInt());
    }

    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override
    {
        model->setData(index, qobject_cast<QComboBox *>(editor)->currentIndex());
    }
};

} // namespace

tab_prefer_security::tab_prefer_security(QWidget *parent)
    : CTabWidget(parent)
    , m_ui(std::make_unique<Ui::tab_prefer_security>())
{
    m_ui->setupUi(this);
    takeXmlTextOnly(m_ui->tt_defaultLaunchAttachmentPerms);
    for (QLabel *icon : {m_ui->info, m_ui->info2})
        showSharpPicture(icon, QStringLiteral(":/img/info.png"));
    makeTable();
}

tab_prefer_security::~tab_prefer_security() = default;

void tab_prefer_security::makeTable()
{
    QTableView *view = m_ui->tableView_fileTypes;
    auto *table = new FileTypeTable(m_ui->tt_defaultLaunchAttachmentPerms);
    view->setModel(table);
    view->setItemDelegateForColumn(FileTypeTable::LevelColumn, new LevelDelegate(view));
    connect(m_ui->btn_add_type, &QPushButton::clicked, view, [view, table] {
        const QModelIndex added = table->index(table->addType(), FileTypeTable::ExtensionColumn);
        view->setCurrentIndex(added);
        view->edit(added);
    });
    connect(m_ui->btn_remove_types, &QPushButton::clicked, view, [view, table] {
        // The button gives its focus away when nothing is left to remove.
        view->setFocus();
        QVector<int> rows;
        for (const QModelIndex &row : view->selectionModel()->selectedRows())
            rows += row.row();
        table->removeTypes(rows);
    });
    const auto follow = [this, view] {
        m_ui->btn_remove_types->setEnabled(view->selectionModel()->hasSelection());
    };
    connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, this, follow);
    connect(table, &FileTypeTable::modelReset, this, follow);
    follow();
}

void tab_prefer_security::explainNoMode(const EditorXmlData &record)
{
    const bool isNamed = record.strDisableOpenSaveFileAttach != EditorXmlData().strDisableOpenSaveFileAttach;
    m_ui->cb_fileattachmentsMode->setPlaceholderText(isNamed ? tr("Imported; a save drops it")
                                                             : tr("Not set"));
}

CHandler_Prefer_Security::CHandler_Prefer_Security(bool editor)
    : PreferHandler(Product::of(editor), {6, tr("Security Setting"), QStringLiteral("Security Settings")})
{
}

void CHandler_Prefer_Security::fillPage(tab_prefer_security &page, const EditorXmlData &data)
{
    PreferHandler::fillPage(page, data);
    page.explainNoMode(data);
}
