// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWebEnginePage>

#include <functional>

/// Stands in for a window that a page asks for, because the engine tells the address only to a new window.
/// Never shown; ends itself.
class RefusedWindow : public QWebEnginePage
{
    Q_OBJECT

public:
    using Wanted = std::function<void(const QUrl &url)>;

    /// `wanted` is told the address that the window would show.
    RefusedWindow(QWebEngineProfile *profile, QObject *parent, Wanted wanted);

protected:
    bool acceptNavigationRequest(const QUrl &url, NavigationType type, bool isMainFrame) override;

private:
    const Wanted m_wanted;
};
