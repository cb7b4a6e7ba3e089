// SPDX-License-Identifier: Apache-2.0
#include "app/DlgCustomizationTool_v2.h"

#include "app/HelpPanel.h"
#include "app/HighestPageId.h"
#include "config/CCommon.h"
#include "pages/CTabWidget.h"
#include "pages/ICutsomizationHandler.h"
#include "ui_DlgCustomizationTool_v2.h"
#include "welcome/HelpAddress.h"
#include "welcome/tab_userguide.h"
#include "welcome/webview/CWebViewHandler.h"

#include <QButtonGroup>
#include <QSplitter>
#include <QStackedLayout>

namespace {

constexpr int helpPanelWidth = 285;

} // namespace

QString DlgCustomizationTool_v2::InfoName()
{
    const auto entry = m_handlers.find(m_pageButtons->checkedId());
    const bool pageShown = m_tabsInitialised && entry != m_handlers.end() && entry->first <= highestPageId;
    const QString name = pageShown ? entry->second->GetInfoName() : QString();
    return name.isEmpty() ? QStringLiteral("Welcome.html") : name;
}

QSplitter *DlgCustomizationTool_v2::Splitter() const
{
    auto *page = qobject_cast<CTabWidget *>(m_stack->currentWidget());
    return page ? page->Splitter() : nullptr;
}

std::unique_ptr<CWebViewHandler> DlgCustomizationTool_v2::makeWebViewHandler()
{
    return std::make_unique<CWebViewHandler>([this](const std::wstring &module, const std::wstring &function,
                                                    const std::wstring &, std::wstring &) {
        if (module == L"closeguidfun" && function == L"closeguid")
            m_ui->tb_info->click();
    });
}

void DlgCustomizationTool_v2::placeHelpPanel(QSplitter *splitter)
{
    if (!m_helpPanel)
        m_helpPanel = new HelpPanel(m_webViewHandler.get());
    // A page that was never shown has its size only after this.
    layout()->activate();
    if (splitter->indexOf(m_helpPanel) >= 0)
        return;
    splitter->addWidget(m_helpPanel);
    splitter->setSizes({splitter->width(), 0});
}

void DlgCustomizationTool_v2::On_ReloadInformation()
{
    ShowInfomation(m_ui->tb_info->isChecked());
}

void DlgCustomizationTool_v2::ShowInfomation(bool show)
{
    if (m_guide && m_stack->currentWidget() == m_guide && !show && m_pageBelowGuide)
        m_stack->setCurrentWidget(m_pageBelowGuide);
    QSplitter *splitter = Splitter();
    if (!splitter)
        return;
    placeHelpPanel(splitter);
    m_helpPanel->load(helpAddress(CCommon::GetAppDirPath(), InfoName()));

    const int width = splitter->width();
    if (!show)
        splitter->setSizes({width, 0});
    else if (splitter->sizes().last() == 0)
        splitter->setSizes({width - helpPanelWidth, helpPanelWidth});
}

void DlgCustomizationTool_v2::ShowUserGuide()
{
    if (!m_guide) {
        m_guide = new tab_userguide(m_webViewHandler.get(), this);
        m_stack->addWidget(m_guide);
    }
    if (m_stack->currentWidget() == m_guide)
        return;
    m_pageBelowGuide = m_stack->currentWidget();
    m_informationBelowGuide = m_ui->tb_info->isChecked();
    m_stack->setCurrentWidget(m_guide);
    m_ui->tb_info->setChecked(true);
}

void DlgCustomizationTool_v2::releaseInformation()
{
    // A page that is chosen in place of the guide has no help panel that was not open before.
    const bool leavesGuide = m_pageBelowGuide && m_stack->currentWidget() != m_guide;
    if (!leavesGuide)
        return;
    m_pageBelowGuide.clear();
    if (!m_informationBelowGuide)
        m_ui->tb_info->setChecked(false);
}
