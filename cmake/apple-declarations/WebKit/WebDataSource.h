// SPDX-License-Identifier: Apache-2.0
#pragma once

#import <WebKit/LegacyWebKit.h>

@class WebFrame;

PCT_LEGACY_WEBKIT
@interface WebDataSource : NSObject

@property (nonatomic, readonly, copy) NSData *data;
@property (nonatomic, readonly, strong) WebFrame *webFrame;
@property (nonatomic, readonly, strong) NSURLRequest *initialRequest;
@property (nonatomic, readonly, strong) NSMutableURLRequest *request;
@property (nonatomic, readonly, strong) NSURLResponse *response;
@property (nonatomic, readonly, copy) NSString *textEncodingName;
@property (nonatomic, readonly, getter=isLoading) BOOL loading;
@property (nonatomic, readonly, copy) NSString *pageTitle;
@property (nonatomic, readonly, strong) NSURL *unreachableURL;

- (instancetype)initWithRequest:(NSURLRequest *)request;

@end
