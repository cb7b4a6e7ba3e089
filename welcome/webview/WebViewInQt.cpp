// SPDX-License-Identifier: Apache-2.0
#include "welcome/webview/WebViewInQt.h"

#include "core/Logging.h"
#include "core/PrintableText.h"
#include "welcome/webview/BridgeLimits.h"
#include "welcome/webview/IWebViewHandler.h"
#include "welcome/webview/WebBackend.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QStackedLayout>
#include <QUrl>

namespace {

constexpr int longestLogged = 1024; ///< UTF-16 units in one line of the log
constexpr int firstLoadSeconds = 15;

const QLatin1String refused("{ ret:999 }");

void logValue(const char *prefix, const QString &value)
{
    const QString shown = printableText(value.left(longestLogged));
    qCDebug(logWelcome).noquote().nospace() << prefix << shown;
}

} // namespace

WebViewInQt::WebViewInQt(QWidget *parent)
    : QWidget(parent)
    , m_calls(BridgeLimits::callsPerSecond)
    , m_pages(new QStackedLayout(this))
    , m_message(new QLabel(tr("The help page is not available."), this))
    , m_backend(makeWebBackend(this, this))
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    m_message->setAlignment(Qt::AlignCenter);
    m_message->setWordWrap(true);
    m_pages->addWidget(m_message);
    if (m_backend) {
        m_pages->addWidget(m_backend->widget());
        m_pages->setCurrentWidget(m_backend->widget());
    }
    // An engine must go before the application; a window need not.
    connect(qApp, &QCoreApplication::aboutToQuit, this, [this] { m_backend.reset(); });
    connect(this, &WebViewInQt::SignalAcceptNatigationRequest, this, &WebViewInQt::accpetNavigationRequest);
}

WebViewInQt::WebViewInQt(const QString &url, QWidget *parent)
    : WebViewInQt(parent)
{
    // The view of this system names itself like no browser that pages know.
    if (m_backend && QSysInfo::productVersion() == QLatin1String("10.14"))
        m_backend->setUserAgent(
            QStringLiteral("Mozilla/5.0 (Macintosh; Intel Mac OS X 10_14_6) AppleWebKit/605.1.15 "
                           "(KHTML, like Gecko) Version/12.1.2 Safari/605.1.15"));
    load(url, firstLoadSeconds);
}

WebViewInQt::~WebViewInQt()
{
    // Whoever made the handler may have deleted it already.
    m_handler = nullptr;
    if (m_backend)
        m_backend->stop();
}

void WebViewInQt::SetWebViewHandler(IWebViewHandler *handler)
{
    m_handler = handler;
}

QString WebViewInQt::GetNavigateEndURL() const
{
    return m_navigateEndUrl;
}

void WebViewInQt::SetNavigateEndURL(const QString &url)
{
    m_navigateEndUrl = url;
}

void WebViewInQt::load(const QString &url, int timeLimit)
{
    if (m_backend)
        m_backend->load(QUrl::fromEncoded(url.toUtf8()), timeLimit);
}

void WebViewInQt::loadRequest(const QString &url)
{
    load(url, 0);
}

QString WebViewInQt::runJavascript(const QString &script)
{
    if (!m_backend)
        return {};
    const std::optional<QString> result = m_backend->evaluate(script);
    if (result) {
        logValue("ret = ", *result);
        return *result;
    }
    logValue("JavaScript execution error: ",
             m_backend->evaluate(QStringLiteral("window.onerror")).value_or(QString()));
    return {};
}

void WebViewInQt::SetStorageData(const QString &json)
{
    if (!m_backend)
        return;
    const QVariantMap items = QJsonDocument::fromJson(json.toUtf8()).object().toVariantMap();
    for (auto item = items.cbegin(); item != items.cend(); ++item)
        m_backend->run(
            QStringLiteral("localStorage.setItem('%1', '%2');").arg(item.key(), item.value().toString()));
}

QString WebViewInQt::GetStorageData()
{
    if (!m_backend)
        return {};
    return m_backend
        ->evaluate(QStringLiteral("(function() {    var items = {};     for (var key in localStorage) {"
                                  "        if (localStorage.hasOwnProperty(key)) {"
                                  "            items[key] = localStorage.getItem(key);        }    }"
                                  "    return JSON.stringify(items);})()"))
        .value_or(QString());
}

bool WebViewInQt::admits(const QStringList &values)
{
    const bool inTime = m_calls.admits();
    if (m_calls.hasJustFilled())
        qCWarning(logWelcome,
                  "A help page calls too often: its calls are refused for the rest of the second.");
    if (!inTime)
        return false;
    const bool isShort = values.join(QString()).size() <= BridgeLimits::longestCall;
    if (!isShort)
        qCWarning(logWelcome, "A help page called with too much text: the call is refused.");
    return isShort;
}

QVariant WebViewInQt::DispatchFun(const QString &module, const QString &function, const QString &parameter)
{
    if (!admits({module, function, parameter}))
        return refused;
    logValue("WebViewInQt::DispatchFun-----strModule = ", module);
    logValue("WebViewInQt::DispatchFun-----strFuncName = ", function);
    logValue("WebViewInQt::DispatchFun-----strParam = ", parameter);
    if (!m_handler)
        return refused;
    std::wstring result;
    m_handler->DispatchFun(module.toStdWString(), function.toStdWString(), parameter.toStdWString(), result);
    return QString::fromStdWString(result);
}

QVariant WebViewInQt::DispatchFunAsync(const QString &module, const QString &function,
                                       const QString &parameter, const QString &callback)
{
    if (!admits({module, function, parameter, callback}))
        return refused;
    logValue("WebViewInQt::DispatchFunAsync-----strModule = ", module);
    logValue("WebViewInQt::DispatchFunAsync-----strFuncName = ", function);
    logValue("WebViewInQt::DispatchFunAsync-----strParam = ", parameter);
    logValue("WebViewInQt::DispatchFunAsync-----callback = ", callback);
    if (!m_handler)
        return refused;
    m_handler->DispatchFunAsync(module.toStdWString(), function.toStdWString(), parameter.toStdWString(),
                                callback.toStdWString());
    return QString();
}

void WebViewInQt::decidePolicyForNavigationAction(const QString &url)
{
    emit SignalAcceptNatigationRequest(url);
}

void WebViewInQt::notifyHandler()
{
    if (m_handler)
        m_handler->Notify(0, std::wstring(), nullptr);
}

void WebViewInQt::loadFinish(const QString &, const QString &)
{
    notifyHandler();
}

void WebViewInQt::loadError()
{
    notifyHandler();
}

void WebViewInQt::pageAvailable(bool available)
{
    if (m_backend)
        m_pages->setCurrentWidget(available ? m_backend->widget() : m_message);
}

void WebViewInQt::loadStart() {}

void WebViewInQt::urlChanged(const QString &) {}

void WebViewInQt::DragFile(const QString &) {}

void WebViewInQt::ExtractCookies(const QString &, const QString &) {}

void WebViewInQt::accpetNavigationRequest(const QString &) {}
