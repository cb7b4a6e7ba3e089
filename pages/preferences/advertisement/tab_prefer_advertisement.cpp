// SPDX-License-Identifier: Apache-2.0
#include "pages/preferences/advertisement/tab_prefer_advertisement.h"

#include "ui_tab_prefer_advertisement.h"

tab_prefer_advertisement::tab_prefer_advertisement(QWidget *parent)
    : CTabWidget(parent)
    , m_ui(std::make_unique<Ui::tab_prefer_advertisement>())
{
    m_ui->setupUi(this);
}

tab_prefer_advertisement::~tab_prefer_advertisement() = default;

CHandler_Prefer_Advertisement::CHandler_Prefer_Advertisement(bool editor)
    : PreferHandler(Product::of(editor), {1, tr("Advertisement"), QStringLiteral("Advertisement"),
                                          PageFacts::Products::EditorOnly})
{
}
