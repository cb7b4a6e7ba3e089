// SPDX-License-Identifier: Apache-2.0
#pragma once

#import <WebKit/LegacyWebKit.h>

@class WebFrame;
@class WebPreferences;
@class WebScriptObject;
@protocol WebFrameLoadDelegate;
@protocol WebPolicyDelegate;
@protocol WebResourceLoadDelegate;
@protocol WebUIDelegate;

PCT_LEGACY_WEBKIT
@interface WebView : NSView

@property (nonatomic, assign) id<WebUIDelegate> UIDelegate;
@property (nonatomic, assign) id<WebResourceLoadDelegate> resourceLoadDelegate;
@property (nonatomic, assign) id<WebPolicyDelegate> policyDelegate;
@property (nonatomic, assign) id<WebFrameLoadDelegate> frameLoadDelegate;
@property (nonatomic, readonly, strong) WebFrame *mainFrame;
@property (nonatomic, readonly, strong) WebFrame *selectedFrame;
@property (nonatomic, copy) NSString *applicationNameForUserAgent;
@property (nonatomic, copy) NSString *customUserAgent;
@property (nonatomic, copy) NSString *groupName;
@property (nonatomic, copy) NSString *mainFrameURL;
@property (nonatomic, readonly, copy) NSString *mainFrameTitle;
@property (nonatomic, readonly, strong) WebScriptObject *windowScriptObject;
@property (nonatomic, strong) WebPreferences *preferences;
@property (nonatomic, strong) NSWindow *hostWindow;
@property (nonatomic) BOOL drawsBackground;
@property (nonatomic) BOOL shouldCloseWithWindow;
@property (nonatomic) BOOL shouldUpdateWhileOffscreen;
@property (nonatomic, readonly, getter=isLoading) BOOL loading;
@property (nonatomic, readonly) double estimatedProgress;
@property (nonatomic, readonly) BOOL canGoBack;
@property (nonatomic, readonly) BOOL canGoForward;

- (instancetype)initWithFrame:(NSRect)frame frameName:(NSString *)name groupName:(NSString *)group;
- (void)close;
- (BOOL)goBack;
- (BOOL)goForward;
- (NSString *)stringByEvaluatingJavaScriptFromString:(NSString *)script;
- (NSString *)userAgentForURL:(NSURL *)url;

- (IBAction)stopLoading:(id)sender;
- (IBAction)reload:(id)sender;
- (IBAction)goBack:(id)sender;
- (IBAction)goForward:(id)sender;

@end
