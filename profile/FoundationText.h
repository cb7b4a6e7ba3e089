// SPDX-License-Identifier: Apache-2.0
#pragma once

#import <Foundation/Foundation.h>

#include <QString>

// For Objective-C++ files only: text between Qt and Foundation, and the scope of autoreleased objects.

/// An autoreleased copy of the text.
inline NSString *toNSString(const QString &text)
{
    return [NSString stringWithCharacters:reinterpret_cast<const unichar *>(text.utf16())
                                   length:static_cast<NSUInteger>(text.size())];
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
