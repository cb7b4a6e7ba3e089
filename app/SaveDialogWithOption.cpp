// SPDX-License-Identifier: Apache-2.0
#include "app/SaveDialogWithOption.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QGridLayout>

SaveDialogWithOption::SaveDialogWithOption(QWidget *parent, const QString &proposedFile,
                                           const QString &filter)
    : QFileDialog(parent, QString(), QFileInfo(proposedFile).absolutePath(), filter)
    , m_option(new QCheckBox(this))
{
    setOption(DontUseNativeDialog);
    setAcceptMode(AcceptSave);
    selectFile(proposedFile);
    auto *grid = qobject_cast<QGridLayout *>(layout());
    grid->addWidget(m_option, grid->rowCount(), 0, 1, -1);
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
