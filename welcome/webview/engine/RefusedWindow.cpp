// SPDX-License-Identifier: Apache-2.0
#include "welcome/webview/engine/RefusedWindow.h"

#include <QTimer>

RefusedWindow::RefusedWindow(QWebEngineProfile *profile, QObject *parent, LinkClicked linkClicked)
    : QWebEnginePage(profile, parent)
    , m_linkClicked(std::move(linkClicked))
{
    // Also when no address follows.
    constexpr int longestWait = 5000;
    QTimer::singleShot(longestWait, this, &QObject::deleteLater);
}

bool RefusedWindow::acceptNavigationRequest(const QUrl &url, NavigationType type, bool)
{
    if (type == NavigationTypeLinkClicked)
        m_linkClicked(url);
    deleteLater();
    return false;
}
