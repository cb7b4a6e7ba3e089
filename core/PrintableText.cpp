// SPDX-License-Identifier: Apache-2.0
#include "core/PrintableText.h"

#include <algorithm>

namespace {

using Escape = QString (*)(uint character);

bool isInvisible(uint character)
{
    if (character < 0x7f)
        return character < ' ';
    switch (QChar::category(character)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return false;
    }
}

QString hexadecimal(const char *prefix, uint number, int digits)
{
    return QLatin1String(prefix) + QStringLiteral("%1").arg(number, digits, 16, QLatin1Char('0'));
}

QString escaped(uint character)
{
    if (character == '\n')
        return QStringLiteral("\\n");
    if (character == '\t')
        return QStringLiteral("\\t");
    if (character < 0x100)
        return hexadecimal("\\x", character, 2);
    return character < 0x10000 ? hexadecimal("\\u", character, 4) : hexadecimal("\\U", character, 8);
}

QString escapedInLine(uint character)
{
    const bool isLayout = character == '\n' || character == '\t';
    return isLayout ? QString(QChar(static_cast<ushort>(character))) : escaped(character);
}

/// Inside of strings everything below the blank is written out already; outside it is layout.
QString escapedForJson(uint character)
{
    if (character < ' ')
        return QChar(static_cast<ushort>(character));
    if (character < 0x10000)
        return hexadecimal("\\u", character, 4);
    return hexadecimal("\\u", QChar::highSurrogate(character), 4) +
           hexadecimal("\\u", QChar::lowSurrogate(character), 4);
}

/// The character that begins at the position; half a pair counts as one.
uint characterAt(const QString &text, int position)
{
    const QChar first = text.at(position);
    const QChar second = position + 1 < text.size() ? text.at(position + 1) : QChar();
    if (first.isHighSurrogate() && second.isLowSurrogate())
        return QChar::surrogateToUcs4(first, second);
    return first.unicode();
}

bool isUnusual(QChar character)
{
    return character.unicode() < ' ' || character.unicode() >= 0x7f;
}

/// A loop that always goes to its end, so that the compiler can look at many characters at a time.
bool holdsUnusual(const QChar *text, int length)
{
    bool found = false;
    for (int i = 0; i < length; ++i)
        found |= isUnusual(text[i]);
    return found;
}

/// Most text is printable ASCII, which needs no look at what a character is.
int nextUnusual(const QString &text, int position)
{
    constexpr int blockLength = 64;
    while (text.size() - position >= blockLength && !holdsUnusual(text.constData() + position, blockLength))
        position += blockLength;
    return static_cast<int>(std::find_if(text.cbegin() + position, text.cend(), isUnusual) - text.cbegin());
}

QString withEscapes(const QString &text, Escape escape)
{
    QString visible;
    int written = 0;
    int length = 1;
    for (int i = nextUnusual(text, 0); i < text.size(); i = nextUnusual(text, i + length)) {
        const uint character = characterAt(text, i);
        length = QChar::requiresSurrogates(character) ? 2 : 1;
        if (!isInvisible(character))
            continue;
        visible.append(text.constData() + written, i - written).append(escape(character));
        written = i + length;
    }
    return written == 0 ? text : visible.append(text.constData() + written, text.size() - written);
}

} // namespace

QString printableText(const QString &text)
{
    return visibleText(QString(text).replace(QLatin1Char('\\'), QLatin1String("\\\\")));
}

QString visibleText(const QString &text)
{
    return withEscapes(text, escaped);
}

QString visibleLines(const QString &text)
{
    return withEscapes(text, escapedInLine);
}

QString visibleJson(const QString &json)
{
    return withEscapes(json, escapedForJson);
}

QString printableStart(const QString &text, int length)
{
    if (text.size() <= length)
        return printableText(text);
    const bool halvesPair = text.at(length - 1).isHighSurrogate();
    return printableText(text.left(halvesPair ? length - 1 : length)) + QChar(0x2026);
}
