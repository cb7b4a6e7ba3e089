// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QUrl>
#include <QWidget>

class IWebViewHandler;
class WebViewInQt;

/// Shows help beside a page. Its view is made when the panel is seen for the first time.
class HelpPanel : public QWidget
{
    Q_OBJECT

public:
    /// `handler` answers the scripts of the help pages; it is not owned and may be null.
    explicit HelpPanel(IWebViewHandler *handler, QWidget *parent = nullptr);

    /// Shows a help page, or says that it is not available.
    void load(const QUrl &address);

protected:
    void moveEvent(QMoveEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void makeView();
    bool isOpen() const;

    IWebViewHandler *const m_handler;
    WebViewInQt *m_view = nullptr;
    QUrl m_address;
};
