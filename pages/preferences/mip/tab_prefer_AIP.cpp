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

void tab_prefer_AIP::setPolicy(int index)
{
    m_ui->cb_aip_options->setCurrentIndex(index);
}

void tab_prefer_AIP::setAuthLibrary(int index)
{
    m_ui->cb_auth_lib_options->setCurrentIndex(index);
}

void tab_prefer_AIP::setExternalBrowserUsed(bool on)
{
    m_ui->cb_UseExternalBrowserForSSO->setChecked(on);
}
