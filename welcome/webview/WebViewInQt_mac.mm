// SPDX-License-Identifier: Apache-2.0
// The system's web view behind WebViewInQt.
#include "profile/propertylist/FoundationText.h"
#include "welcome/webview/CocoaView_mac.h"
#import "welcome/webview/CustomAiWebView_mac.h"
#include "welcome/webview/WebBackend.h"
#include "welcome/webview/WebViewTarget.h"

#include <QUrl>

namespace {

NSURLRequest *requestFor(const QUrl &address, int timeLimit)
{
    NSURL *url = [NSURL URLWithString:toNSString(address.toString(QUrl::FullyEncoded))];
    if (timeLimit == 0)
        return [NSURLRequest requestWithURL:url];
    return [NSURLRequest requestWithURL:url
                            cachePolicy:NSURLRequestUseProtocolCachePolicy
                        timeoutInterval:timeLimit];
}

class CocoaBackend : public WebBackend
{
public:
    CocoaBackend(WebViewTarget *target, QWidget *parent)
        : m_view([[CustomAiWebView alloc] initWithFrame:NSMakeRect(0, 0, 300, 300) target:target guard:parent])
        , m_container(makeCocoaContainer(m_view, parent))
    {
    }

    ~CocoaBackend() override
    {
        const AutoreleaseScope scope;
        stop();
        detachCocoaView(m_container);
        delete m_container;
        [m_view release];
    }

    QWidget *widget() override { return m_container; }

    void load(const QUrl &address, int timeLimit) override
    {
        const AutoreleaseScope scope;
        [m_view showPage:requestFor(address, timeLimit)];
    }

    void stop() override
    {
        const AutoreleaseScope scope;
        [[m_view mainFrame] stopLoading];
    }

    void setUserAgent(const QString &agent) override
    {
        const AutoreleaseScope scope;
        [m_view setCustomUserAgent:toNSString(agent)];
    }

    void run(const QString &script) override { evaluate(script); }

    std::optional<QString> evaluate(const QString &script) override
    {
        const AutoreleaseScope scope;
        NSString *result = [m_view resultOf:toNSString(script)];
        return result ? std::optional<QString>(toQString(result)) : std::nullopt;
    }

private:
    CustomAiWebView *const m_view;
    QWidget *const m_container;
};

} // namespace

std::unique_ptr<WebBackend> makeWebBackend(WebViewTarget *target, QWidget *parent)
{
    return std::make_unique<CocoaBackend>(target, parent);
}
