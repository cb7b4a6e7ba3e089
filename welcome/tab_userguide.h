// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

#include <memory>

class IWebViewHandler;
class WebViewInQt;

namespace Ui {
class tab_userguide;
}

/// The page with the user guide.
class tab_userguide : public QWidget
{
    Q_OBJECT

public:
    /// Begins to load the guide. `handler` answers the guide's scripts; it is not owned and may be null.
    explicit tab_userguide(IWebViewHandler *handler, QWidget *parent = nullptr);
    ~tab_userguide() override;

private:
    const std::unique_ptr<Ui::tab_userguide> m_ui;
    IWebViewHandler *const m_handler;
    std::shared_ptr<WebViewInQt> m_view;
};
