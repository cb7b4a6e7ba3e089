// SPDX-License-Identifier: Apache-2.0
#pragma once

#import <AppKit/AppKit.h>

/// All of the view and its delegates has been deprecated since macOS 10.14.
#define PCT_LEGACY_WEBKIT __attribute__((deprecated("WebView and its delegates are deprecated")))
