// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPointer>
#include <QWidget>

#import <WebKit/WebKit.h>

class WebViewTarget;

/// The system's web view as its own delegate: it decides about navigation and new windows, answers the scripts
/// of its pages as their `external` object, and tells its target what happens.
@interface CustomAiWebView : WebView {
@private
    QPointer<QWidget> m_guard;
    WebViewTarget *m_target;
}

/// `target` is part of `guard` and gets no calls when that is gone.
- (id)initWithFrame:(NSRect)frame target:(WebViewTarget *)target guard:(QWidget *)guard;

/// A script's result as text; nil when it is null or undefined.
- (NSString *)resultOf:(NSString *)script;

- (NSString *)DispatchFun:(NSString *)module function:(NSString *)function parameter:(NSString *)parameter;
- (NSString *)DispatchFunAsync:(NSString *)module
                      function:(NSString *)function
                     parameter:(NSString *)parameter
                      callback:(NSString *)callback;
@end
