// SPDX-License-Identifier: Apache-2.0
#include "pages/preferences/mip/tab_prefer_AIP.h"

#include "ui_tab_prefer_AIP.h"

tab_prefer_AIP::tab_prefer_AIP(QWidget *parent)
    : CTabWidget(parent)
    , m_ui(std::make_unique<Ui::tab_prefer_AIP>())
{
    m_ui->setupUi(this);
}

tab_prefer_AIP::~tab_prefer_AIP() = default;

CHandler_Prefer_AIP::CHandler_Prefer_AIP(bool editor)
    : PreferHandler(Product::of(editor), {2, tr("Microsoft Information Protection (MIP)"),
                                          QStringLiteral("AIP Default and Mandatory Labeling")})
{
}
