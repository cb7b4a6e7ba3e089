// SPDX-License-Identifier: Apache-2.0
#include "app/HelpSide.h"

#include "app/HelpPanel.h"
#include "config/CCommon.h"
#include "pages/CTabWidget.h"
#include "welcome/HelpAddress.h"
#include "welcome/tab_userguide.h"
#include "welcome/webview/CWebViewHandler.h"

#include <QSplitter>
#include <QStackedLayout>
#include <QToolButton>

namespace {

constexpr int panelWidth = 285;
constexpr int leastPanelWidth = 240;

/// What the scripts of help pages may ask for.
std::unique_ptr<CWebViewHandler> makeHandler(QToolButton &button)
{
    return std::make_unique<CWebViewHandler>([&button](const std::wstring &module,
                                                       const std::wstring &function, const std::wstring &,
                                                       std::wstring &) {
        if (module == L"closeguidfun" && function == L"closeguid")
            button.click();
    });
}

} // namespace

HelpSide::HelpSide(QWidget &window, QStackedLayout &pages, QToolButton &button)
    : m_window(window)
    , m_pages(pages)
    , m_button(button)
    , m_handler(makeHandler(button))
{
    connect(&m_pages, &QStackedLayout::currentChanged, this, &HelpSide::releaseButton);
}

HelpSide::~HelpSide() = default;

QSplitter *HelpSide::splitter() const
{
    auto *page = qobject_cast<CTabWidget *>(m_pages.currentWidget());
    return page ? page->Splitter() : nullptr;
}

void HelpSide::placePanel(QSplitter *splitter)
{
    if (!m_panel)
        m_panel = new HelpPanel(m_handler.get());
    // A page that was never shown has its size only after this.
    m_window.layout()->activate();
    if (splitter->indexOf(m_panel) >= 0)
        return;
    splitter->addWidget(m_panel);
    splitter->setSizes({splitter->width(), 0});
}

void HelpSide::showPanel(bool open, const QString &pageName)
{
    if (m_guide && m_pages.currentWidget() == m_guide && !open && m_pageBelowGuide)
        m_pages.setCurrentWidget(m_pageBelowGuide);
    QSplitter *splitter = this->splitter();
    if (!splitter)
        return;
    placePanel(splitter);
    m_panel->load(helpAddress(CCommon::GetAppDirPath(), pageName));

    // The window gets no narrower than both, and only as long as both are there.
    m_panel->setMinimumWidth(open ? leastPanelWidth : 0);
    const int width = splitter->width();
    if (!open) {
        const bool returns = panelHasFocus() && m_focusBeforePanel;
        splitter->setSizes({width, 0});
        if (returns)
            m_focusBeforePanel->setFocus();
    } else if (splitter->sizes().last() == 0) {
        m_focusBeforePanel = m_window.focusWidget();
        splitter->setSizes({width - panelWidth, panelWidth});
    }
}

bool HelpSide::panelHasFocus() const
{
    const QWidget *focus = m_window.focusWidget();
    return focus && m_panel->isAncestorOf(focus);
}

void HelpSide::showGuide()
{
    if (!m_guide) {
        m_guide = new tab_userguide(m_handler.get(), &m_window);
        m_pages.addWidget(m_guide);
    }
    if (m_pages.currentWidget() == m_guide)
        return;
    m_pageBelowGuide = m_pages.currentWidget();
    m_panelOpenBelowGuide = m_button.isChecked();
    m_pages.setCurrentWidget(m_guide);
    m_button.setChecked(true);
}

void HelpSide::releaseButton()
{
    // A page that is chosen in place of the guide has no help panel that was not open before.
    const bool leavesGuide = m_pageBelowGuide && m_pages.currentWidget() != m_guide;
    if (!leavesGuide)
        return;
    m_pageBelowGuide.clear();
    if (!m_panelOpenBelowGuide)
        m_button.setChecked(false);
}
