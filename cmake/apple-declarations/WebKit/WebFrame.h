// SPDX-License-Identifier: Apache-2.0
#pragma once

#import <WebKit/LegacyWebKit.h>

@class WebDataSource;
@class WebScriptObject;
@class WebView;

PCT_LEGACY_WEBKIT
@interface WebFrame : NSObject

@property (nonatomic, readonly, copy) NSString *name;
@property (nonatomic, readonly, strong) WebView *webView;
@property (nonatomic, readonly, strong) WebDataSource *dataSource;
@property (nonatomic, readonly, strong) WebDataSource *provisionalDataSource;
@property (nonatomic, readonly, strong) WebFrame *parentFrame;
@property (nonatomic, readonly, copy) NSArray *childFrames;
@property (nonatomic, readonly, strong) WebScriptObject *windowObject;

- (instancetype)initWithName:(NSString *)name webFrameView:(NSView *)view webView:(WebView *)webView;
- (void)loadRequest:(NSURLRequest *)request;
- (void)loadData:(NSData *)data
            MIMEType:(NSString *)type
    textEncodingName:(NSString *)encoding
             baseURL:(NSURL *)base;
- (void)loadHTMLString:(NSString *)text baseURL:(NSURL *)base;
- (void)stopLoading;
- (void)reload;
- (WebFrame *)findFrameNamed:(NSString *)name;

@end
