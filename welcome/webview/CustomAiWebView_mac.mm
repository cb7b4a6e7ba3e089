// SPDX-License-Identifier: Apache-2.0
#import "welcome/webview/CustomAiWebView_mac.h"

#include "core/Logging.h"
#include "profile/propertylist/FoundationText.h"
#include "welcome/webview/WebViewTarget.h"

#include <QUrl>

namespace {

bool isCancelled(NSError *error)
{
    return [[error domain] isEqualToString:NSURLErrorDomain] && [error code] == -999;
}

QUrl toQUrl(NSURL *url)
{
    return QUrl::fromEncoded(toQString([url absoluteString]).toUtf8());
}

bool isClick(NSDictionary *action)
{
    return [[action objectForKey:WebActionNavigationTypeKey] intValue] == WebNavigationTypeLinkClicked;
}

NSString *addressOf(WebFrame *frame)
{
    return [[[[frame dataSource] request] URL] absoluteString];
}

void logLine(const char *text, const QString &value = QString())
{
    qCDebug(logWelcome).noquote().nospace() << text << value;
}

} // namespace

@implementation CustomAiWebView

- (id)initWithFrame:(NSRect)frame target:(WebViewTarget *)target guard:(QWidget *)guard
{
    self = [super initWithFrame:frame frameName:nil groupName:nil];
    if (!self)
        return nil;
    m_target = target;
    m_guard = guard;
    [self setFrameLoadDelegate:(id)self];
    [self setPolicyDelegate:(id)self];
    [self setResourceLoadDelegate:(id)self];
    [self setUIDelegate:(id)self];
    return self;
}

- (void)dealloc
{
    [self setFrameLoadDelegate:nil];
    [self setPolicyDelegate:nil];
    [self setResourceLoadDelegate:nil];
    [self setUIDelegate:nil];
    [super dealloc];
}

- (WebViewTarget *)target
{
    return m_guard.isNull() ? nullptr : m_target;
}

- (void)showPage:(NSURLRequest *)request
{
    m_rules.setPage(toQUrl([request URL]));
    [[self mainFrame] loadRequest:request];
}

- (void)openOutside:(NSURL *)url
{
    if (m_rules.admitsOpening())
        [[NSWorkspace sharedWorkspace] openURL:url];
}

- (NSString *)resultOf:(NSString *)script
{
    id result = [[self windowScriptObject] evaluateWebScript:script];
    if (!result || result == [NSNull null] || [result isKindOfClass:[WebUndefined class]])
        return nil;
    return [result isKindOfClass:[WebScriptObject class]] ? [result stringRepresentation] : [result description];
}

// ---- Loading ----

- (void)webView:(WebView *)sender didStartProvisionalLoadForFrame:(WebFrame *)frame
{
    (void)sender;
    (void)frame;
    const AutoreleaseScope scope;
    if ([self target])
        [self target]->loadStart();
}

- (void)webView:(WebView *)sender didCommitLoadForFrame:(WebFrame *)frame
{
    const AutoreleaseScope scope;
    if (![self target])
        return;
    if (frame == [sender mainFrame])
        [self target]->pageAvailable(true);
    [self target]->urlChanged(toQString(addressOf(frame)));
}

- (void)webView:(WebView *)sender didFinishLoadForFrame:(WebFrame *)frame
{
    (void)sender;
    const AutoreleaseScope scope;
    if (![self target])
        return;
    NSData *data = [[frame dataSource] data];
    NSString *content = [[[NSString alloc] initWithData:data encoding:NSUTF8StringEncoding] autorelease];
    [self target]->loadFinish(toQString(addressOf(frame)), toQString(content));
}

- (void)webView:(WebView *)sender
    didFailProvisionalLoadWithError:(NSError *)error
                           forFrame:(WebFrame *)frame
{
    const AutoreleaseScope scope;
    if ([self target] && frame == [sender mainFrame] && !isCancelled(error))
        [self target]->pageAvailable(false);
}

/// Pages see their folder and nothing else: nil cancels the request.
- (NSURLRequest *)webView:(WebView *)sender
                 resource:(id)identifier
          willSendRequest:(NSURLRequest *)request
         redirectResponse:(NSURLResponse *)response
           fromDataSource:(WebDataSource *)dataSource
{
    (void)sender;
    (void)identifier;
    (void)response;
    (void)dataSource;
    const AutoreleaseScope scope;
    return m_rules.allowsLoading(toQUrl([request URL])) ? request : nil;
}

- (void)webView:(WebView *)sender
                   resource:(id)identifier
    didFailLoadingWithError:(NSError *)error
             fromDataSource:(WebDataSource *)dataSource
{
    (void)sender;
    (void)identifier;
    (void)dataSource;
    const AutoreleaseScope scope;
    if ([self target] && !isCancelled(error))
        [self target]->loadError();
}

// ---- Navigation ----

- (void)webView:(WebView *)sender
    decidePolicyForNewWindowAction:(NSDictionary *)action
                           request:(NSURLRequest *)request
                      newFrameName:(NSString *)name
                  decisionListener:(id<WebPolicyDecisionListener>)listener
{
    (void)sender;
    (void)name;
    const AutoreleaseScope scope;
    logLine("webView:(WebView *)sender decidePolicyForNewWindowAction {}");
    if (m_rules.toNewWindow(toQUrl([request URL]), isClick(action)) == PageRules::Answer::OpenOutside)
        [self openOutside:[request URL]];
    [listener ignore];
}

- (void)webView:(WebView *)sender
    decidePolicyForNavigationAction:(NSDictionary *)action
                            request:(NSURLRequest *)request
                              frame:(WebFrame *)frame
                   decisionListener:(id<WebPolicyDecisionListener>)listener
{
    const AutoreleaseScope scope;
    const QUrl url = toQUrl([request URL]);
    if (!PageRules::isMail(url))
        [self tellNavigation:toQString([[request URL] absoluteString])];
    const bool isMainFrame = frame == [sender mainFrame];
    if (m_rules.toNavigation(url, isClick(action), isMainFrame) == PageRules::Answer::Use) {
        [listener use];
        return;
    }
    [self openOutside:[request URL]];
    [listener ignore];
}

- (void)tellNavigation:(const QString &)address
{
    logLine("webView:(WebView *)sender decidePolicyForNavigationAction {}");
    logLine("main frame url ", address);
    if ([self target])
        [self target]->decidePolicyForNavigationAction(address);
}

// ---- The scripts' external object ----

- (void)webView:(WebView *)sender didClearWindowObject:(WebScriptObject *)window forFrame:(WebFrame *)frame
{
    (void)sender;
    (void)frame;
    const AutoreleaseScope scope;
    [window evaluateWebScript:toNSString(PageRules::closingScript())];
    [window setValue:self forKey:@"external"];
}

+ (BOOL)isSelectorExcludedFromWebScript:(SEL)selector
{
    const AutoreleaseScope scope;
    logLine("Selector: ", toQString(NSStringFromSelector(selector)));
    return selector != @selector(DispatchFun:function:parameter:) &&
           selector != @selector(DispatchFunAsync:function:parameter:callback:);
}

+ (NSString *)webScriptNameForSelector:(SEL)selector
{
    if (selector == @selector(DispatchFun:function:parameter:))
        return @"DispatchFun";
    if (selector == @selector(DispatchFunAsync:function:parameter:callback:))
        return @"DispatchFunAsync";
    return nil;
}

- (NSString *)DispatchFun:(NSString *)module function:(NSString *)function parameter:(NSString *)parameter
{
    NSString *result = nil;
    {
        const AutoreleaseScope scope;
        if ([self target])
            result = [toNSString([self target]
                                     ->DispatchFun(toQString(module), toQString(function), toQString(parameter))
                                     .toString()) retain];
    }
    return [result autorelease];
}

- (NSString *)DispatchFunAsync:(NSString *)module
                      function:(NSString *)function
                     parameter:(NSString *)parameter
                      callback:(NSString *)callback
{
    NSString *result = nil;
    {
        const AutoreleaseScope scope;
        if ([self target])
            result = [toNSString([self target]
                                     ->DispatchFunAsync(toQString(module), toQString(function),
                                                        toQString(parameter), toQString(callback))
                                     .toString()) retain];
    }
    return [result autorelease];
}

@end
