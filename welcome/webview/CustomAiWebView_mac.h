// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "welcome/webview/PageRules.h"

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
    PageRules m_rules;
}

/// `target` is part of `guard` and gets no calls when that is gone.
- (id)initWithFrame:(NSRect)frame target:(WebViewTarget *)target guard:(QWidget *)guard;

/// Loads a page in the main frame; its folder is what pages see from now on.
- (void)showPage:(NSURLRequest *)request;

/// A script's result as text; nil when it is null or undefined.
- (NSString *)resultOf:(NSString *)script;

- (NSString *)DispatchFun:(NSString *)module function:(NSString *)function parameter:(NSString *)parameter;
- (NSString *)DispatchFunAsync:(NSString *)module
                      function:(NSString *)function
                     parameter:(NSString *)parameter
                      callback:(NSString *)callback;
@end
