// SPDX-License-Identifier: Apache-2.0
#pragma once

#import <WebKit/LegacyWebKit.h>

@class WebDataSource;
@class WebView;

PCT_LEGACY_WEBKIT
@protocol WebResourceLoadDelegate <NSObject>
@optional

- (id)webView:(WebView *)sender
    identifierForInitialRequest:(NSURLRequest *)request
                 fromDataSource:(WebDataSource *)source;
- (NSURLRequest *)webView:(WebView *)sender
                 resource:(id)identifier
          willSendRequest:(NSURLRequest *)request
         redirectResponse:(NSURLResponse *)response
           fromDataSource:(WebDataSource *)source;
- (void)webView:(WebView *)sender
              resource:(id)identifier
    didReceiveResponse:(NSURLResponse *)response
        fromDataSource:(WebDataSource *)source;
- (void)webView:(WebView *)sender
                          resource:(id)identifier
    didFinishLoadingFromDataSource:(WebDataSource *)source;
- (void)webView:(WebView *)sender
                   resource:(id)identifier
    didFailLoadingWithError:(NSError *)error
             fromDataSource:(WebDataSource *)source;

@end
