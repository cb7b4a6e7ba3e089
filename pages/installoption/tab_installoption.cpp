// SPDX-License-Identifier: Apache-2.0
#include "pages/installoption/tab_installoption.h"

#include "ui_tab_installoption.h"

tab_installoption::tab_installoption(QWidget *parent)
    : CTabWidget(parent)
    , m_ui(std::make_unique<Ui::tab_installoption>())
{
    m_ui->setupUi(this);
}

tab_installoption::~tab_installoption() = default;
