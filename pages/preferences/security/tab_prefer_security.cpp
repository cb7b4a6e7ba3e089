// SPDX-License-Identifier: Apache-2.0
#include "pages/preferences/security/tab_prefer_security.h"

#include "pages/EnteredText.h"
#include "pages/SharpPicture.h"
#include "ui_tab_prefer_security.h"

tab_prefer_security::tab_prefer_security(QWidget *parent)
    : CTabWidget(parent)
    , m_ui(std::make_unique<Ui::tab_prefer_security>())
{
    m_ui->setupUi(this);
    takeXmlTextOnly(m_ui->tt_defaultLaunchAttachmentPerms);
    for (QLabel *icon : {m_ui->info, m_ui->info2})
        showSharpPicture(icon, QStringLiteral(":/img/info.png"));
}

tab_prefer_security::~tab_prefer_security() = default;

void tab_prefer_security::setAttachmentMode(int mode)
{
    m_ui->cb_fileattachmentsMode->setCurrentIndex(mode);
}

void tab_prefer_security::setFileTypes(const QString &list)
{
    // What was imported is shown as it stands.
    const QSignalBlocker blocker(m_ui->tt_defaultLaunchAttachmentPerms);
    m_ui->tt_defaultLaunchAttachmentPerms->setPlainText(list);
}

void tab_prefer_security::setActionsDisabled(bool on)
{
    m_ui->rb_disableopenfile_all->setChecked(on);
}
