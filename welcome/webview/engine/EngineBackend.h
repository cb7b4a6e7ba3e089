// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "welcome/webview/engine/CustomAiWebView.h"
#include "welcome/webview/engine/LocalPagesOnly.h"
#include "welcome/webview/PageRules.h"
#include "welcome/webview/WebBackend.h"

#include <QTimer>
#include <QWebEngineProfile>
#include <QWebEngineView>

/// The Qt web engine as a backend: a private session, a page and its view.
class EngineBackend : public QObject, public WebBackend
{
    Q_OBJECT

public:
    EngineBackend(WebViewTarget *target, QWidget *parent);

    QWidget *widget() override;
    void load(const QUrl &address, int timeLimit) override;
    void stop() override;
    void setUserAgent(const QString &agent) override;
    void run(const QString &script) override;
    std::optional<QString> evaluate(const QString &script) override;

private:
    void setUpProfile();
    void setUpView();
    void scrollTo(const QUrl &address);

    // In this order: the engine wants a profile to be the last to go.
    PageRules m_rules;
    LocalPagesOnly m_network;
    std::unique_ptr<QWebEngineProfile> m_profile;
    std::unique_ptr<QWebEngineView> m_view;
    std::unique_ptr<CustomAiWebView> m_page;
    QTimer m_timeLimit;
};
