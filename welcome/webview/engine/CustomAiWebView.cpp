// SPDX-License-Identifier: Apache-2.0
#include "welcome/webview/engine/CustomAiWebView.h"

#include "welcome/webview/BridgeLimits.h"
#include "welcome/webview/engine/EnginePermissions.h"
#include "welcome/webview/engine/RefusedWindow.h"
#include "welcome/webview/PageRules.h"
#include "welcome/webview/WebViewTarget.h"

#include <QDesktopServices>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLoggingCategory>
#include <QScopedValueRollback>
#include <QUuid>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>

#include <utility>

namespace {

/// Under the name of the pages that the module belongs to.
Q_LOGGING_CATEGORY(logWebEngine, "pct.welcome")

constexpr int consoleLinesPerSecond = 20;
constexpr int longestConsoleLine = 1024; ///< characters

bool isReadablePage(const QUrl &url)
{
    if (!url.isLocalFile())
        return true;
    const QFileInfo file(url.toLocalFile());
    return file.isFile() && file.isReadable();
}

QString contentsOf(const QUrl &url)
{
    QFile file(url.toLocalFile());
    return isReadablePage(url) && file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll())
                                                                 : QString();
}

QString bridgeSource(const QString &key)
{
    QFile file(QStringLiteral(":/webview/external.js"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("the page's side of the bridge is not compiled in");
    return QStringLiteral("(%1)(\"%2\", %3, %4);")
        .arg(QString::fromUtf8(file.readAll()), key, QString::number(BridgeLimits::callsPerSecond),
             QString::number(BridgeLimits::longestCall));
}

} // namespace

CustomAiWebView::CustomAiWebView(WebViewTarget *target, QObject *guard, QWebEngineProfile *profile,
                                 PageRules &rules)
    : QWebEnginePage(profile)
    , m_target(target)
    , m_guard(guard)
    , m_rules(rules)
    , m_bridgeKey(QUuid::createUuid().toString())
    , m_consoleLines(consoleLinesPerSecond)
{
    installBridge();
    connectDelegate();
}

void CustomAiWebView::installBridge()
{
    QWebEngineScript script;
    script.setSourceCode(bridgeSource(m_bridgeKey));
    script.setInjectionPoint(QWebEngineScript::DocumentCreation);
    script.setWorldId(QWebEngineScript::MainWorld);
    script.setRunsOnSubFrames(false);
    scripts().insert(script);
}

void CustomAiWebView::connectDelegate()
{
    connect(this, &QWebEnginePage::loadStarted, this, [this] {
        if (target())
            target()->loadStart();
    });
    connect(this, &QWebEnginePage::urlChanged, this, [this](const QUrl &url) {
        pageShown();
        if (target())
            target()->urlChanged(url.toString(QUrl::FullyEncoded));
    });
    connect(this, &QWebEnginePage::loadFinished, this, [this](bool ok) {
        // Pages that are not there were refused before; what ends otherwise was cancelled.
        if (!ok)
            return;
        pageShown();
        if (target())
            target()->loadFinish(url().toString(QUrl::FullyEncoded), contentsOf(url()));
    });
    connect(this, &QWebEnginePage::renderProcessTerminated, this, &CustomAiWebView::fail);
    EnginePermissions::refuseAll(this);
}

void CustomAiWebView::show(const QUrl &address)
{
    if (!m_shown || address.adjusted(QUrl::NormalizePathSegments) != url()) {
        load(address);
        return;
    }
    // The engine would load the page again.
    runJavaScript(address.hasFragment() ? QStringLiteral("location.replace(location.hash)")
                                        : QStringLiteral("scrollTo(0, 0)"));
}

void CustomAiWebView::giveUp()
{
    triggerAction(Stop);
    fail();
}

void CustomAiWebView::pageShown()
{
    m_shown = true;
    if (target())
        target()->pageAvailable(true);
}

void CustomAiWebView::fail()
{
    m_shown = false;
    if (!target())
        return;
    target()->loadError();
    target()->pageAvailable(false);
}

bool CustomAiWebView::acceptNavigationRequest(const QUrl &url, NavigationType type, bool isMainFrame)
{
    const bool isClicked = isMainFrame && takeClickedLink(url);
    const PageRules::Answer answer = m_rules.toNavigation(url, isClicked, isMainFrame);
    if (!PageRules::isMail(url))
        tellNavigation(url);
    if (answer == PageRules::Answer::OpenOutside) {
        openOutside(url);
        return false;
    }
    return isMainFrame ? mayShow(url, isClicked || type == NavigationTypeTyped) : m_rules.allowsLoading(url);
}

void CustomAiWebView::tellNavigation(const QUrl &url)
{
    const QString address = url.toString(QUrl::FullyEncoded);
    qCDebug(logWebEngine, "webView:(WebView *)sender decidePolicyForNavigationAction {}");
    qCDebug(logWebEngine).noquote() << "main frame url" << address;
    if (target())
        target()->decidePolicyForNavigationAction(address);
}

bool CustomAiWebView::mayShow(const QUrl &url, bool isWanted)
{
    const bool isThere = m_rules.allowsLoading(url) && isReadablePage(url);
    if (!isThere && isWanted)
        fail();
    return isThere;
}

bool CustomAiWebView::takeClickedLink(const QUrl &url)
{
    return std::exchange(m_clickedLink, {}) == url.toString(QUrl::FullyEncoded);
}

void CustomAiWebView::openOutside(const QUrl &url)
{
    if (m_rules.admitsOpening())
        QDesktopServices::openUrl(url);
}

QWebEnginePage *CustomAiWebView::createWindow(WebWindowType)
{
    qCDebug(logWebEngine, "webView:(WebView *)sender decidePolicyForNewWindowAction {}");
    return new RefusedWindow(profile(), this, [this](const QUrl &url) {
        if (m_rules.toNewWindow(url, takeClickedLink(url)) == PageRules::Answer::OpenOutside)
            openOutside(url);
    });
}

bool CustomAiWebView::javaScriptPrompt(const QUrl &, const QString &message, const QString &defaultValue,
                                       QString *result)
{
    if (message != m_bridgeKey || !target())
        return false;
    const QScopedValueRollback<bool> answering(m_answering, true);
    *result = answerToScript(defaultValue);
    return true;
}

QString CustomAiWebView::answerToScript(const QString &call)
{
    const QJsonArray texts = QJsonDocument::fromJson(call.toUtf8()).array();
    const auto text = [&texts](int index) { return texts.at(index).toString(); };
    const QString method = text(0);
    if (method == QLatin1String("DispatchFun"))
        return target()->DispatchFun(text(1), text(2), text(3)).toString();
    if (method == QLatin1String("DispatchFunAsync"))
        return target()->DispatchFunAsync(text(1), text(2), text(3), text(4)).toString();
    if (method == QLatin1String("linkClicked"))
        m_clickedLink = text(1);
    if (method == QLatin1String("resourceFailed"))
        target()->loadError();
    return {};
}

bool CustomAiWebView::javaScriptConfirm(const QUrl &, const QString &)
{
    return false;
}

void CustomAiWebView::javaScriptAlert(const QUrl &, const QString &) {}

void CustomAiWebView::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString &message,
                                               int line, const QString &source)
{
    if (m_consoleLines.admits())
        qCDebug(logWebEngine) << "Script:" << source << line << message.left(longestConsoleLine);
}

QStringList CustomAiWebView::chooseFiles(FileSelectionMode, const QStringList &, const QStringList &)
{
    return {};
}
