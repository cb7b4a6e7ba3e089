// SPDX-License-Identifier: Apache-2.0
#pragma once

#import <WebKit/LegacyWebKit.h>

#include <Declare.h>

@class WebFrame;
@class WebView;

typedef NS_ENUM(NSInteger, WebNavigationType) {
    WebNavigationTypeLinkClicked,
    WebNavigationTypeFormSubmitted,
    WebNavigationTypeBackForward,
    WebNavigationTypeReload,
    WebNavigationTypeFormResubmitted,
    WebNavigationTypeOther
};

PCT_DECLARE NSString *WebActionNavigationTypeKey;
PCT_DECLARE NSString *WebActionElementKey;
PCT_DECLARE NSString *WebActionButtonKey;
PCT_DECLARE NSString *WebActionModifierFlagsKey;
PCT_DECLARE NSString *WebActionOriginalURLKey;

PCT_LEGACY_WEBKIT
@protocol WebPolicyDecisionListener <NSObject>

- (void)use;
- (void)download;
- (void)ignore;

@end

PCT_LEGACY_WEBKIT
@protocol WebPolicyDelegate <NSObject>
@optional

- (void)webView:(WebView *)webView
    decidePolicyForNavigationAction:(NSDictionary *)action
                            request:(NSURLRequest *)request
                              frame:(WebFrame *)frame
                   decisionListener:(id<WebPolicyDecisionListener>)listener;
- (void)webView:(WebView *)webView
    decidePolicyForNewWindowAction:(NSDictionary *)action
                           request:(NSURLRequest *)request
                      newFrameName:(NSString *)name
                  decisionListener:(id<WebPolicyDecisionListener>)listener;
- (void)webView:(WebView *)webView
    decidePolicyForMIMEType:(NSString *)type
                    request:(NSURLRequest *)request
                      frame:(WebFrame *)frame
           decisionListener:(id<WebPolicyDecisionListener>)listener;
- (void)webView:(WebView *)webView
    unableToImplementPolicyWithError:(NSError *)error
                               frame:(WebFrame *)frame;

@end
