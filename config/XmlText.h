// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// Whether a document or profile that holds the character can be read again. Half a surrogate pair counts as
/// a character that can; see isXmlText.
inline bool isXmlCharacter(QChar c)
{
    if (c.unicode() < 0x20)
        return c == QLatin1Char('\t') || c == QLatin1Char('\n') || c == QLatin1Char('\r');
    return c.unicode() != 0x7f && c.unicode() != 0xfffe && c.unicode() != 0xffff;
}

/// The same for the unit at a place of the text, which is not half a surrogate pair either.
bool isXmlUnit(const QString &text, int place);

/// Whether a document or profile can hold the text: all its units are such.
bool isXmlText(const QString &text);

/// The text without what keeps it from being XML text.
QString xmlText(const QString &text);

/// The text with U+FFFD for each half of a surrogate pair.
QString withWholePairs(const QString &text);

/// Whether an element or an attribute can be called so.
bool isXmlName(const QString &name);
