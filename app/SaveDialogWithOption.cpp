// SPDX-License-Identifier: Apache-2.0
#include "app/SaveDialogWithOption.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QTreeView>

#include <utility>

namespace {

constexpr QSize initialSize(780, 480); // wide enough for the columns of the list

/// Before the buttons, as its place asks for. Through the button box's proxy Tab would pass by everything
/// between the file's name and the buttons.
void putIntoTabOrder(const QFileDialog &dialog, QWidget *option)
{
    dialog.findChild<QWidget *>(QStringLiteral("buttonBox"))->setFocusProxy(nullptr);
    QWidget::setTabOrder(dialog.findChild<QWidget *>(QStringLiteral("fileTypeCombo")), option);
}

/// Qt gives the columns beside the name a width that cuts sizes and dates off.
void fitColumns(const QFileDialog &dialog)
{
    QHeaderView *header = dialog.findChild<QTreeView *>(QStringLiteral("treeView"))->header();
    header->setSectionResizeMode(0, QHeaderView::Stretch);
    for (int column = 1; column < header->count(); ++column)
        header->setSectionResizeMode(column, QHeaderView::ResizeToContents);
}

/// For those who hear the dialog rather than see it.
void nameFields(const QFileDialog &dialog)
{
    const std::pair<const char *, const char *> fields[] = {{"lookInLabel", "lookInCombo"},
                                                            {"fileTypeLabel", "fileTypeCombo"}};
    for (const auto &[label, field] : fields)
        dialog.findChild<QLabel *>(QLatin1String(label))
            ->setBuddy(dialog.findChild<QWidget *>(QLatin1String(field)));
}

} // namespace

SaveDialogWithOption::SaveDialogWithOption(QWidget *parent, const QString &proposedFile,
                                           const QString &filter)
    : QFileDialog(parent, QString(), QFileInfo(proposedFile).absolutePath(), filter)
    , m_option(new QCheckBox(this))
{
    setOption(DontUseNativeDialog);
    setAcceptMode(AcceptSave);
    selectFile(proposedFile);
    resize(initialSize);
    auto *grid = qobject_cast<QGridLayout *>(layout());
    grid->addWidget(m_option, grid->rowCount(), 0, 1, -1);
    putIntoTabOrder(*this, m_option);
    nameFields(*this);
    fitColumns(*this);
}

void SaveDialogWithOption::setOptionText(const QString &text)
{
    m_option->setText(text);
}

void SaveDialogWithOption::setOptionEnabled(bool enabled)
{
    m_option->setEnabled(enabled);
}

bool SaveDialogWithOption::isOptionChecked() const
{
    return m_option->isChecked();
}
