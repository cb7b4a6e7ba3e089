// SPDX-License-Identifier: Apache-2.0
#include "pages/preferences/myapps/tab_prefer_myapps.h"

#include "ui_tab_prefer_myapps.h"

tab_prefer_myapps::tab_prefer_myapps(QWidget *parent)
    : CTabWidget(parent)
    , m_ui(std::make_unique<Ui::tab_prefer_myapps>())
{
    m_ui->setupUi(this);
}

tab_prefer_myapps::~tab_prefer_myapps() = default;

CHandler_Prefer_MyApps::CHandler_Prefer_MyApps(bool editor)
    : PreferHandler(Product::of(editor), {4, tr("Hide My Apps"), QString(), PageFacts::Products::EditorOnly})
{
}
