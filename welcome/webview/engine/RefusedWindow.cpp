// SPDX-License-Identifier: Apache-2.0
#include "welcome/webview/engine/RefusedWindow.h"

#include <QTimer>

RefusedWindow::RefusedWindow(QWebEngineProfile *profile, QObject *parent, Wanted wanted)
    : QWebEnginePage(profile, parent)
    , m_wanted(std::move(wanted))
{
    // Also when no address follows.
    constexpr int longestWait = 5000;
    QTimer::singleShot(longestWait, this, &QObject::deleteLater);
}

bool RefusedWindow::acceptNavigationRequest(const QUrl &url, NavigationType, bool)
{
    m_wanted(url);
    deleteLater();
    return false;
}
