// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "welcome/webview/IWebViewHandler.h"
#include "welcome/webview/WebViewInQt.h"

#include <QDesktopServices>
#include <QStringList>
#include <QTemporaryDir>
#include <QUrl>

/// Notes every call and answers with `answer`.
class RecordingHandler : public IWebViewHandler
{
public:
    void DispatchFun(const std::wstring &module, const std::wstring &function, const std::wstring &parameter,
                     std::wstring &result) override;
    void DispatchFunAsync(const std::wstring &module, const std::wstring &function,
                          const std::wstring &parameter, const std::wstring &callback) override;
    void Notify(int code, const std::wstring &text, void *data) override;
    int Query() override { return 0; }

    std::function<void()> onCall;
    QString answer = QStringLiteral("answer");
    QList<QStringList> calls;
    QList<QStringList> asyncCalls;
    QList<int> codes; ///< of the notifications
    bool notifiedAsAgreed = true;
};

/// A folder of help pages and a view on the screen that shows them.
class HelpPages : public QObject
{
    Q_OBJECT

public:
    explicit HelpPages(IWebViewHandler *handler = nullptr);
    ~HelpPages() override;

    /// Writes a page around what its body holds and gives its address, with an anchor when wanted.
    QString add(const QString &name, const QByteArray &body);
    QString address(const QString &name, const QString &anchor = QString()) const;
    QString path(const QString &name) const;

    /// Writes a page, loads it and waits until it is there.
    void open(const QByteArray &body);
    void openAddress(const QString &address);

    /// What a script in the page yields.
    QString in(const QString &script);

    bool saysNotAvailable() const;

    /// Clicks the element of the page as a user does.
    void click(const QString &elementId);

    /// The widget that takes the mouse for the page.
    QWidget *surface() const;

    /// Opened in other applications meanwhile.
    QStringList opened;

    QTemporaryDir folder;
    std::unique_ptr<WebViewInQt> view;

public slots:
    void noteOpened(const QUrl &url);

private:
    void waitFor(const QString &condition);

    int m_written = 0; ///< pages, each of which knows its number
};
