// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// Whether a document or profile that holds the character can be read again.
inline bool isXmlCharacter(QChar c)
{
    if (c.unicode() < 0x20)
        return c == QLatin1Char('\t') || c == QLatin1Char('\n') || c == QLatin1Char('\r');
    return c.unicode() != 0x7f && c.unicode() != 0xfffe && c.unicode() != 0xffff;
}

/// The text without other characters, and with U+FFFD for half a surrogate pair.
QString xmlText(const QString &text);
