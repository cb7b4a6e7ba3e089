// SPDX-License-Identifier: Apache-2.0
#include "pages/preferences/imanage/tab_prefer_imanage.h"

#include "ui_tab_prefer_imanage.h"

tab_prefer_imanage::tab_prefer_imanage(QWidget *parent)
    : CTabWidget(parent)
    , m_ui(std::make_unique<Ui::tab_prefer_imanage>())
{
    m_ui->setupUi(this);
}

tab_prefer_imanage::~tab_prefer_imanage() = default;

CHandler_Prefer_IManage::CHandler_Prefer_IManage(bool editor)
    : PreferHandler(Product::of(editor),
                    {3, tr("Enable iManage10 SSO Login"), QStringLiteral("Enable iManage10 SSO Login"),
                     PageFacts::Products::EditorOnly})
{
}
