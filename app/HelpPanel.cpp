// SPDX-License-Identifier: Apache-2.0
#include "app/HelpPanel.h"

#include "welcome/webview/WebViewInQt.h"

#include <QVBoxLayout>

HelpPanel::HelpPanel(IWebViewHandler *handler, QWidget *parent)
    : QWidget(parent)
    , m_handler(handler)
{
    // Without it a subclass of QWidget ignores the background of a style sheet.
    setAttribute(Qt::WA_StyledBackground);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
}

void HelpPanel::load(const QUrl &address)
{
    m_address = address;
    if (m_view)
        m_view->loadRequest(m_address.toString(QUrl::FullyEncoded));
}

void HelpPanel::moveEvent(QMoveEvent *event)
{
    QWidget::moveEvent(event);
    if (m_view)
        m_view->setVisible(isOpen());
}

bool HelpPanel::isOpen() const
{
    // A splitter closes the panel by moving it out of sight, where Tab would still lead to its page.
    return parentWidget()->rect().intersects(geometry());
}

void HelpPanel::paintEvent(QPaintEvent *event)
{
    QWidget::paintEvent(event);
    // Painted at all, it has been opened, by the button or by its edge.
    if (!m_view)
        QMetaObject::invokeMethod(this, &HelpPanel::makeView, Qt::QueuedConnection);
}

void HelpPanel::makeView()
{
    // Meanwhile it may have been closed again.
    if (m_view || !isOpen())
        return;
    m_view = new WebViewInQt(this);
    m_view->SetWebViewHandler(m_handler);
    layout()->addWidget(m_view);
    load(m_address);
}
