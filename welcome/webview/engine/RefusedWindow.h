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
    using LinkClicked = std::function<void(const QUrl &url)>;

    /// `linkClicked` is told the address if a click on a link asked for the window.
    RefusedWindow(QWebEngineProfile *profile, QObject *parent, LinkClicked linkClicked);

protected:
    bool acceptNavigationRequest(const QUrl &url, NavigationType type, bool isMainFrame) override;

private:
    const LinkClicked m_linkClicked;
};
