// SPDX-License-Identifier: Apache-2.0
#include "pages/preferences/startpage/tab_prefer_startpage.h"

#include "ui_tab_prefer_startpage.h"

tab_prefer_startpage::tab_prefer_startpage(QWidget *parent)
    : CTabWidget(parent)
    , m_ui(std::make_unique<Ui::tab_prefer_startpage>())
{
    m_ui->setupUi(this);
}

tab_prefer_startpage::~tab_prefer_startpage() = default;

CHandler_Prefer_StartPage::CHandler_Prefer_StartPage(bool editor)
    : PreferHandler(Product::of(editor), {5, tr("Start Page"), QStringLiteral("Start Page")})
{
}
