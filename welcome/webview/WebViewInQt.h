// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "welcome/webview/RateLimit.h"
#include "welcome/webview/WebViewTarget.h"

#include <QWidget>

#include <memory>

class IWebViewHandler;
class QLabel;
class QStackedLayout;
class WebBackend;

/// Shows web pages in a window and lets their scripts call a handler. In place of a page that cannot be
/// shown, or on a machine that cannot show pages at all, it says so.
///
/// Pages are local: they reach files in the folder of the page that was asked for and nothing else. A script
/// may make a hundred calls each second with a megabyte of text; more are answered "{ ret:999 }" at once.
class WebViewInQt : public QWidget, public WebViewTarget
{
    Q_OBJECT

public:
    explicit WebViewInQt(QWidget *parent = nullptr);

    /// Also loads a page; it has failed when it is not there after 15 seconds.
    explicit WebViewInQt(const QString &url, QWidget *parent = nullptr);
    ~WebViewInQt() override;

    /// Not owned; may be null.
    void SetWebViewHandler(IWebViewHandler *handler);

    QString GetNavigateEndURL() const;
    void SetNavigateEndURL(const QString &url);

    /// Loads an encoded address.
    void loadRequest(const QString &url);

    /// Runs a script in the page and waits, a few seconds at most, for its result as text. Empty when it has
    /// none.
    QString runJavascript(const QString &script);

    /// Puts the members of a JSON object into the page's local storage. Values are not escaped: one with a
    /// single quote is lost. Any other text sets nothing.
    void SetStorageData(const QString &json);

    /// The page's local storage as a JSON object; empty when there is no page.
    QString GetStorageData();

    QVariant DispatchFun(const QString &module, const QString &function, const QString &parameter) override;
    QVariant DispatchFunAsync(const QString &module, const QString &function, const QString &parameter,
                              const QString &callback) override;
    void decidePolicyForNavigationAction(const QString &url) override;
    void loadStart() override;
    void loadFinish(const QString &url, const QString &content) override;
    void loadError() override;
    void urlChanged(const QString &url) override;
    void pageAvailable(bool available) override;
    void DragFile(const QString &path);
    void ExtractCookies(const QString &url, const QString &cookies);

signals:
    void SignalAcceptNatigationRequest(const QString &url);

public slots:
    void accpetNavigationRequest(const QString &url);

private:
    void load(const QString &url, int timeLimit);
    void notifyHandler();
    bool admits(const QStringList &values);

    IWebViewHandler *m_handler = nullptr;
    QString m_navigateEndUrl;
    RateLimit m_calls;
    QStackedLayout *m_pages;
    QLabel *m_message;
    std::unique_ptr<WebBackend> m_backend;
};
