// SPDX-License-Identifier: Apache-2.0
#include "welcome/tab_userguide.h"

#include "config/CCommon.h"
#include "ui_tab_userguide.h"
#include "welcome/HelpAddress.h"
#include "welcome/webview/WebViewInQt.h"

tab_userguide::tab_userguide(IWebViewHandler *handler, QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::tab_userguide>())
    , m_handler(handler)
    , m_view(std::make_shared<WebViewInQt>(this))
{
    m_ui->setupUi(this);
    m_ui->verticalLayout->addWidget(m_view.get());
    m_view->SetWebViewHandler(m_handler);
    const QUrl guide = helpAddress(CCommon::GetAppDirPath(), QStringLiteral("Welcome.html"));
    m_view->loadRequest(guide.toString(QUrl::FullyEncoded));
}

tab_userguide::~tab_userguide() = default;
