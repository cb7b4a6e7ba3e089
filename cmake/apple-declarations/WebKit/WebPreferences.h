// SPDX-License-Identifier: Apache-2.0
#pragma once

#import <WebKit/LegacyWebKit.h>

PCT_LEGACY_WEBKIT
@interface WebPreferences : NSObject

@property (nonatomic, getter=isJavaScriptEnabled) BOOL javaScriptEnabled;
@property (nonatomic) BOOL javaScriptCanOpenWindowsAutomatically;
@property (nonatomic) BOOL plugInsEnabled;
@property (nonatomic) BOOL privateBrowsingEnabled;
@property (nonatomic) BOOL usesPageCache;
@property (nonatomic) BOOL autosaves;

+ (WebPreferences *)standardPreferences;
- (instancetype)initWithIdentifier:(NSString *)identifier;

@end
