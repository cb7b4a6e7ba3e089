// SPDX-License-Identifier: Apache-2.0
#include "profile/FoundationEscapes.h"

#include <QStringList>

#include <algorithm>

namespace {

/// Stands around the number of a UTF-16 unit. For private use, so it is seldom escaped itself.
constexpr QChar mark(0xe0f0);

constexpr int hexadecimal = 16;

bool needsEscape(QChar c)
{
    return c.isSurrogate() || c == QLatin1Char('\\') || c == QLatin1Char('\r') || c == mark;
}

} // namespace

QString FoundationEscapes::escaped(const QString &text)
{
    if (std::none_of(text.begin(), text.end(), needsEscape))
        return text;
    QString result;
    for (const QChar c : text) {
        if (needsEscape(c))
            result += mark + QString::number(c.unicode(), hexadecimal) + mark;
        else
            result += c;
    }
    return result;
}

QString FoundationEscapes::unescaped(const QString &text)
{
    if (!text.contains(mark))
        return text;
    const QStringList parts = text.split(mark);
    QString result = parts.first();
    for (int i = 1; i + 1 < parts.size(); i += 2) {
        result += QChar(parts.at(i).toUShort(nullptr, hexadecimal));
        result += parts.at(i + 1);
    }
    return result;
}
