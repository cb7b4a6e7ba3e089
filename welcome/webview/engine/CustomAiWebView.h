// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "welcome/webview/RateLimit.h"

#include <QPointer>
#include <QWebEnginePage>

class PageRules;
class WebViewTarget;

/// A page that is its own delegate: it decides about navigation and new windows, answers its scripts, and
/// tells its target what happens.
class CustomAiWebView : public QWebEnginePage
{
    Q_OBJECT

public:
    /// `target` is part of `guard` and gets no calls when that is gone.
    CustomAiWebView(WebViewTarget *target, QObject *guard, QWebEngineProfile *profile, PageRules &rules);

    /// Loads a page, or scrolls to an address within the page that is shown.
    void show(const QUrl &address);

    /// Ends a load that takes too long.
    void giveUp();

    /// Whether a script waits for the answer to its call.
    bool isAnswering() const { return m_answering; }

protected:
    bool acceptNavigationRequest(const QUrl &url, NavigationType type, bool isMainFrame) override;
    QWebEnginePage *createWindow(WebWindowType type) override;
    bool javaScriptPrompt(const QUrl &origin, const QString &message, const QString &defaultValue,
                          QString *result) override;
    bool javaScriptConfirm(const QUrl &origin, const QString &message) override;
    void javaScriptAlert(const QUrl &origin, const QString &message) override;
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString &message, int line,
                                  const QString &source) override;
    QStringList chooseFiles(FileSelectionMode mode, const QStringList &before,
                            const QStringList &types) override;

private:
    WebViewTarget *target() const { return m_guard ? m_target : nullptr; }
    void connectDelegate();
    void installBridge();
    void pageShown();
    void fail();
    void tellNavigation(const QUrl &url);
    bool mayShow(const QUrl &url, bool isWanted);
    /// Whether a click of the user on a link asks for the address; true once for each click.
    bool takeClickedLink(const QUrl &url);
    void openOutside(const QUrl &url);
    QString answerToScript(const QString &call);

    WebViewTarget *const m_target;
    const QPointer<QObject> m_guard;
    PageRules &m_rules;
    const QString m_bridgeKey;
    QString m_clickedLink; ///< encoded
    RateLimit m_consoleLines;
    bool m_shown = false;
    bool m_answering = false;
};
