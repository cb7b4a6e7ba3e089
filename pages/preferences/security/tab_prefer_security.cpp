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

CHandler_Prefer_Security::CHandler_Prefer_Security(bool editor)
    : PreferHandler(Product::of(editor), {6, tr("Security Setting"), QStringLiteral("Security Settings")})
{
}
