// SPDX-License-Identifier: Apache-2.0
#include "app/dlg_select_app_type.h"

#include "core/Logging.h"
#include "ui_dlg_select_app_type.h"

dlg_select_app_type::dlg_select_app_type(QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::dlg_select_app_type>())
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    connect(m_ui->pushButton_OK, &QPushButton::clicked, this, &dlg_select_app_type::takeChoice);
    connect(m_ui->pushButton_Cancel, &QPushButton::clicked, this, &dlg_select_app_type::reject);
}

dlg_select_app_type::~dlg_select_app_type()
{
    qCDebug(logApp, "dlg_select_app_type destructor");
}

void dlg_select_app_type::takeChoice()
{
    // The entries are ordered so that the index says both things.
    const int index = m_ui->comboBox->currentIndex();
    m_bEditor = index % 2 == 0;
    m_bProfile = index >= 2;
    accept();
}
