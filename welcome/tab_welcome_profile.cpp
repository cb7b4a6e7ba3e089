// SPDX-License-Identifier: Apache-2.0
#include "welcome/tab_welcome_profile.h"

#include "ui_tab_welcome_profile.h"

#include <QScrollBar>

tab_welcome_profile::tab_welcome_profile(EditorXmlData * /*data*/, QWidget *parent)
    : FileDropPage(QStringLiteral("mobileconfig"), parent)
    , m_ui(std::make_unique<Ui::tab_welcome_profile>())
{
    m_ui->setupUi(this);
    connect(m_ui->btnRetrieve, &QPushButton::clicked, this, &tab_welcome_profile::sig_systemprofileloaded);
    connect(m_ui->btnImport, &QPushButton::clicked, this,
            [this] { askForFile(tr("profile files (*.mobileconfig)")); });
}

tab_welcome_profile::~tab_welcome_profile() = default;

void tab_welcome_profile::showEvent(QShowEvent *event)
{
    FileDropPage::showEvent(event);
    // Only up and down is scrolled.
    const QScrollBar *bar = m_ui->scrollArea->verticalScrollBar();
    m_ui->scrollArea->setMinimumWidth(m_ui->scrollArea->widget()->minimumSizeHint().width() +
                                      bar->sizeHint().width());
}

void tab_welcome_profile::takeFile(const QString &path)
{
    emit sig_profileloaded(path);
}
