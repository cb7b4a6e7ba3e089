// SPDX-License-Identifier: Apache-2.0
#pragma once

#import <WebKit/LegacyWebKit.h>

@class WebFrame;
@class WebView;

typedef NS_OPTIONS(NSUInteger, WebDragDestinationAction) {
    WebDragDestinationActionNone = 0,
    WebDragDestinationActionDHTML = 1,
    WebDragDestinationActionEdit = 2,
    WebDragDestinationActionLoad = 4,
    WebDragDestinationActionAny = NSUIntegerMax
};

PCT_LEGACY_WEBKIT
@protocol WebUIDelegate <NSObject>
@optional

- (WebView *)webView:(WebView *)sender createWebViewWithRequest:(NSURLRequest *)request;
- (void)webViewShow:(WebView *)sender;
- (void)webViewClose:(WebView *)sender;
- (void)webView:(WebView *)sender
    runJavaScriptAlertPanelWithMessage:(NSString *)message
                      initiatedByFrame:(WebFrame *)frame;
- (BOOL)webView:(WebView *)sender
    runJavaScriptConfirmPanelWithMessage:(NSString *)message
                        initiatedByFrame:(WebFrame *)frame;
- (NSString *)webView:(WebView *)sender
    runJavaScriptTextInputPanelWithPrompt:(NSString *)prompt
                              defaultText:(NSString *)text
                         initiatedByFrame:(WebFrame *)frame;
- (NSArray *)webView:(WebView *)sender
    contextMenuItemsForElement:(NSDictionary *)element
              defaultMenuItems:(NSArray *)items;
- (NSUInteger)webView:(WebView *)sender
    dragDestinationActionMaskForDraggingInfo:(id<NSDraggingInfo>)info;
- (void)webView:(WebView *)sender
    willPerformDragDestinationAction:(WebDragDestinationAction)action
                     forDraggingInfo:(id<NSDraggingInfo>)info;

@end
