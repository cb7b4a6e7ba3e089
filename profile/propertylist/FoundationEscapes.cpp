// SPDX-License-Identifier: Apache-2.0
#include "profile/propertylist/FoundationEscapes.h"

#include <algorithm>

namespace {

/// Stands in front of an escaped UTF-16 unit. For private use, so it is seldom escaped itself.
constexpr QChar mark(0xe0f0);

/// An ideograph in place of a unit that needs an escape, and the other way round.
QChar swapped(QChar c)
{
    return QChar(c.unicode() ^ 0x8000);
}

bool needsEscape(QChar c)
{
    return c.isSurrogate() || c == QLatin1Char('\\') || c == QLatin1Char('\r') || c == QChar::ByteOrderMark ||
           c == mark;
}

} // namespace

QString FoundationEscapes::escaped(const QString &text)
{
    const auto escapes = std::count_if(text.begin(), text.end(), needsEscape);
    if (escapes == 0)
        return text;
    QString result;
    result.reserve(text.size() + static_cast<int>(escapes));
    for (const QChar c : text) {
        if (needsEscape(c))
            result += mark;
        result += needsEscape(c) ? swapped(c) : c;
    }
    return result;
}

QString FoundationEscapes::unescaped(const QString &text)
{
    QString result = text;
    int end = 0;
    for (int i = 0; i < text.size(); ++i) {
        const bool escape = text.at(i) == mark && i + 1 < text.size();
        result[end++] = escape ? swapped(text.at(++i)) : text.at(i);
    }
    result.truncate(end);
    return result;
}
