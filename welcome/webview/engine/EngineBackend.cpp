// SPDX-License-Identifier: Apache-2.0
#include "welcome/webview/engine/EngineBackend.h"

#include "welcome/webview/engine/EngineModule.h"
#include "welcome/webview/engine/EvaluatedScript.h"

#include <QAction>
#include <QCoreApplication>
#include <QWebEngineSettings>

EngineBackend::EngineBackend(WebViewTarget *target, QWidget *parent)
    : m_network(m_rules)
    , m_profile(std::make_unique<QWebEngineProfile>()) // without a name it keeps nothing on the disk
    , m_view(std::make_unique<QWebEngineView>(parent))
    , m_page(std::make_unique<CustomAiWebView>(target, parent, m_profile.get(), m_rules))
{
    setUpProfile();
    setUpView();
    m_timeLimit.setSingleShot(true);
    connect(&m_timeLimit, &QTimer::timeout, m_page.get(), &CustomAiWebView::giveUp);
    connect(m_page.get(), &QWebEnginePage::loadFinished, &m_timeLimit, &QTimer::stop);
}

void EngineBackend::setUpProfile()
{
    m_profile->setUrlRequestInterceptor(&m_network);
    m_profile->setHttpCacheType(QWebEngineProfile::NoCache);
    m_profile->setPersistentCookiesPolicy(QWebEngineProfile::NoPersistentCookies);

    QWebEngineSettings *settings = m_profile->settings();
    using Settings = QWebEngineSettings;
    for (const Settings::WebAttribute unwanted :
         {Settings::ErrorPageEnabled, Settings::PluginsEnabled, Settings::PdfViewerEnabled,
          Settings::LocalContentCanAccessRemoteUrls, Settings::JavascriptCanOpenWindows,
          Settings::JavascriptCanAccessClipboard, Settings::HyperlinkAuditingEnabled,
          Settings::DnsPrefetchEnabled, Settings::AutoLoadIconsForPage, Settings::FullScreenSupportEnabled,
          Settings::ScreenCaptureEnabled, Settings::WebGLEnabled})
        settings->setAttribute(unwanted, false);
    settings->setAttribute(Settings::LocalStorageEnabled, true);
    // Without it Qt 6 does not even follow a link to the next page. The interceptor limits it to the folder.
    settings->setAttribute(Settings::LocalContentCanAccessFileUrls, true);
    settings->setAttribute(Settings::WebRTCPublicInterfacesOnly, true);
    settings->setAttribute(Settings::FocusOnNavigationEnabled, false);
}

void EngineBackend::setUpView()
{
    m_view->setPage(m_page.get());
    // A dropped file belongs to the page of the tool that the help stands beside.
    m_view->setAcceptDrops(false);
    m_view->setContextMenuPolicy(Qt::ActionsContextMenu);
    m_view->addActions({m_page->action(QWebEnginePage::Back), m_page->action(QWebEnginePage::Forward),
                        m_page->action(QWebEnginePage::Copy)});
}

QWidget *EngineBackend::widget()
{
    return m_view.get();
}

void EngineBackend::load(const QUrl &address, int timeLimit)
{
    m_rules.setPage(address);
    if (timeLimit > 0)
        m_timeLimit.start(timeLimit * 1000);
    m_page->show(address);
}

void EngineBackend::stop()
{
    m_page->triggerAction(QWebEnginePage::Stop);
}

void EngineBackend::setUserAgent(const QString &agent)
{
    m_profile->setHttpUserAgent(agent);
}

void EngineBackend::run(const QString &script)
{
    m_page->runJavaScript(script);
}

std::optional<QString> EngineBackend::evaluate(const QString &script)
{
    // While a script waits for the answer to a call, no other can run.
    return m_page->isAnswering() ? std::nullopt : evaluatedScript(m_page.get(), script);
}

extern "C" Q_DECL_EXPORT WebBackend *pctMakeEngineBackend(WebViewTarget *target, QWidget *parent)
{
    return new EngineBackend(target, parent);
}
