// SPDX-License-Identifier: Apache-2.0
#pragma once

// The Cocoa layer writes its lines with NSLog. One switch silences them together with Qt's lines, because a
// command-line program must not mix them into its messages.

/// Whether debug output of the category "pct.profile" is on. In C++, since Qt's categories do not compile in
/// Objective-C++ everywhere.
bool cocoaLogEnabled();

#ifdef __OBJC__
@class NSString;

/// NSLog, when the log is on.
void cocoaLog(NSString *format, ...);
#endif
