// SPDX-License-Identifier: Apache-2.0
#pragma once

#import <Foundation/Foundation.h>

#include <QString>

// For Objective-C++ files only: text between Qt and Foundation, and the scope of autoreleased objects.

/// An autoreleased copy of the text, with a replacement for half a surrogate pair. Never nil.
inline NSString *toNSString(const QString &text)
{
    // Given UTF-16 with half a pair, one Foundation makes nil and another a string that cannot be written.
    const QByteArray bytes = text.toUtf8();
    NSString *copy = [[NSString alloc] initWithBytes:bytes.constData()
                                              length:static_cast<NSUInteger>(bytes.size())
                                            encoding:NSUTF8StringEncoding];
    return copy == nil ? @"" : [copy autorelease];
}

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
