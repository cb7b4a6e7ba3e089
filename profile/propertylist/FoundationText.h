// SPDX-License-Identifier: Apache-2.0
#pragma once

#import <Foundation/Foundation.h>

#include "config/XmlText.h"

#include <QString>

// For Objective-C++ files only: text between Qt and Foundation, and the scope of autoreleased objects.

/// An autoreleased copy of the text, with a replacement for half a surrogate pair. Never nil.
inline NSString *toNSString(const QString &text)
{
    // Given half a pair, one Foundation makes nil and another a string that cannot be written; and one drops
    // a byte order mark in front, which is why something else stands there at first.
    const QString whole = QLatin1Char('.') + withWholePairs(text);
    NSString *copy = [[NSString alloc] initWithCharacters:reinterpret_cast<const unichar *>(whole.utf16())
                                                   length:static_cast<NSUInteger>(whole.size())];
    return [[copy autorelease] substringFromIndex:1];
}

inline NSString *toNSString(QLatin1String text) { return toNSString(QString(text)); }

/// A copy of the text; nil gives a null string.
inline QString toQString(NSString *text)
{
    if (text == nil)
        return QString();
    QString copy(static_cast<int>([text length]), Qt::Uninitialized);
    [text getCharacters:reinterpret_cast<unichar *>(copy.data()) range:NSMakeRange(0, [text length])];
    return copy;
}

/// Releases on leaving its scope what Foundation autoreleased in it. One for each operation, on the stack.
class AutoreleaseScope
{
  public:
    AutoreleaseScope() : m_pool([[NSAutoreleasePool alloc] init]) {}
    ~AutoreleaseScope() { [m_pool drain]; }
    AutoreleaseScope(const AutoreleaseScope &) = delete;
    AutoreleaseScope &operator=(const AutoreleaseScope &) = delete;

  private:
    NSAutoreleasePool *m_pool;
};
