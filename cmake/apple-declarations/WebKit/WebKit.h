// SPDX-License-Identifier: Apache-2.0
#pragma once

#import <WebKit/WebDataSource.h>
#import <WebKit/WebFrame.h>
#import <WebKit/WebFrameLoadDelegate.h>
#import <WebKit/WebPolicyDelegate.h>
#import <WebKit/WebPreferences.h>
#import <WebKit/WebResourceLoadDelegate.h>
#import <WebKit/WebScriptObject.h>
#import <WebKit/WebUIDelegate.h>
#import <WebKit/WebView.h>
