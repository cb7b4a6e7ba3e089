// SPDX-License-Identifier: Apache-2.0
#pragma once

#import <WebKit/LegacyWebKit.h>

/// What an object that is put into a page tells scripts about itself.
@interface NSObject (WebScripting)

+ (NSString *)webScriptNameForSelector:(SEL)selector;
+ (BOOL)isSelectorExcludedFromWebScript:(SEL)selector;
+ (NSString *)webScriptNameForKey:(const char *)name;
+ (BOOL)isKeyExcludedFromWebScript:(const char *)name;
- (id)invokeUndefinedMethodFromWebScript:(NSString *)name withArguments:(NSArray *)arguments;
- (id)invokeDefaultMethodWithArguments:(NSArray *)arguments;
- (void)finalizeForWebScript;

@end

PCT_LEGACY_WEBKIT
@interface WebScriptObject : NSObject

+ (BOOL)throwException:(NSString *)message;
- (id)callWebScriptMethod:(NSString *)name withArguments:(NSArray *)arguments;
- (id)evaluateWebScript:(NSString *)script;
- (void)removeWebScriptKey:(NSString *)name;
- (NSString *)stringRepresentation;
- (id)webScriptValueAtIndex:(unsigned)index;
- (void)setWebScriptValueAtIndex:(unsigned)index value:(id)value;
- (void)setException:(NSString *)description;

@end

PCT_LEGACY_WEBKIT
@interface WebUndefined : NSObject <NSCoding, NSCopying>

+ (WebUndefined *)undefined;

@end
