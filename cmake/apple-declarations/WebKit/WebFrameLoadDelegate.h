// SPDX-License-Identifier: Apache-2.0
#pragma once

#import <WebKit/LegacyWebKit.h>

@class WebFrame;
@class WebScriptObject;
@class WebView;

PCT_LEGACY_WEBKIT
@protocol WebFrameLoadDelegate <NSObject>
@optional

- (void)webView:(WebView *)sender didStartProvisionalLoadForFrame:(WebFrame *)frame;
- (void)webView:(WebView *)sender didReceiveServerRedirectForProvisionalLoadForFrame:(WebFrame *)frame;
- (void)webView:(WebView *)sender
    didFailProvisionalLoadWithError:(NSError *)error
                           forFrame:(WebFrame *)frame;
- (void)webView:(WebView *)sender didCommitLoadForFrame:(WebFrame *)frame;
- (void)webView:(WebView *)sender didReceiveTitle:(NSString *)title forFrame:(WebFrame *)frame;
- (void)webView:(WebView *)sender didFinishLoadForFrame:(WebFrame *)frame;
- (void)webView:(WebView *)sender didFailLoadWithError:(NSError *)error forFrame:(WebFrame *)frame;
- (void)webView:(WebView *)sender didChangeLocationWithinPageForFrame:(WebFrame *)frame;
- (void)webView:(WebView *)sender willCloseFrame:(WebFrame *)frame;
- (void)webView:(WebView *)sender
    didClearWindowObject:(WebScriptObject *)window
                forFrame:(WebFrame *)frame;

@end
