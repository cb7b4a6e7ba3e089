// SPDX-License-Identifier: Apache-2.0
// Uses what a web view for the Mac uses. Not part of the tool: tst_AppleSyntax breaks copies of it.
#import <WebKit/WebKit.h>

#include <QUrl>
#include <QWidget>
#include <QWindow>

#ifndef Q_OS_MACOS
#error "Qt has to show its interface for macOS"
#endif

@interface SampleView
    : WebView <WebFrameLoadDelegate, WebPolicyDelegate, WebResourceLoadDelegate, WebUIDelegate>
@end

@implementation SampleView

- (instancetype)initWithFrame:(NSRect)frame
{
    self = [super initWithFrame:frame frameName:nil groupName:nil];
    [self setFrameLoadDelegate:self];
    [self setPolicyDelegate:self];
    [self setResourceLoadDelegate:self];
    [self setUIDelegate:self];
    return self;
}

+ (BOOL)isSelectorExcludedFromWebScript:(SEL)selector
{
    return selector != @selector(answer:);
}

+ (NSString *)webScriptNameForSelector:(SEL)selector
{
    return selector == @selector(answer:) ? @"answer" : nil;
}

- (NSString *)answer:(NSString *)question
{
    return [self stringByEvaluatingJavaScriptFromString:question];
}

- (void)webView:(WebView *)sender didFinishLoadForFrame:(WebFrame *)frame
{
    NSURL *address = [[[frame dataSource] request] URL];
    NSString *text = [[NSString alloc] initWithData:[[frame dataSource] data] encoding:NSUTF8StringEncoding];
    NSLog(@"%@ %@ %@ %@", sender, [address absoluteString], QUrl::fromNSURL(address).toString().toNSString(),
          text);
    [text release];
}

- (void)webView:(WebView *)sender didClearWindowObject:(WebScriptObject *)window forFrame:(WebFrame *)frame
{
    NSLog(@"%@ %@", sender, [frame name]);
    [window setValue:self forKey:@"external"];
}

- (void)webView:(WebView *)sender
    decidePolicyForNewWindowAction:(NSDictionary *)action
                           request:(NSURLRequest *)request
                      newFrameName:(NSString *)name
                  decisionListener:(id<WebPolicyDecisionListener>)listener
{
    NSLog(@"%@ %@", sender, name);
    if ([[action objectForKey:WebActionNavigationTypeKey] integerValue] == WebNavigationTypeLinkClicked)
        [[NSWorkspace sharedWorkspace] openURL:[request URL]];
    [listener ignore];
}

@end

QWidget *makeSample(QWidget *parent)
{
    SampleView *view = [[SampleView alloc] initWithFrame:NSMakeRect(0, 0, 300, 300)];
    [[view mainFrame] loadRequest:[NSURLRequest requestWithURL:[NSURL URLWithString:@"about:blank"]]];
    return QWidget::createWindowContainer(QWindow::fromWinId(reinterpret_cast<WId>(view)), parent);
}
