// SPDX-License-Identifier: Apache-2.0
#include "profile/propertylist/PropertyListFormats.h"

#include "core/PrintableText.h"
#include "profile/propertylist/PropertyListInput.h"

#include <QRegularExpression>

#include <cstring>

namespace {

/// What octal escapes from 0200 on stand for: the upper half of NeXT's character set.
constexpr char16_t nextStepCharacters[] =
    u"\u00a0ÀÁÂÃÄÅÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖÙÚÛÜÝÞµ×÷©¡¢£⁄¥ƒ§¤’“«‹›ﬁﬂ®–†‡·¦¶•‚„”»…‰¬¿"
    u"¹ˋ´ˆ˜¯˘˙¨²˚¸³˝˛ˇ—±¼½¾àáâãäåçèéêëìÆíªîïðñŁØŒºòóôõöæùúûıüýłøœßþÿ"
    u"\ufffd\ufffd";

bool isOneOf(QChar c, const char *characters)
{
    const ushort code = c.unicode();
    return code > 0 && code < 0x80 && std::strchr(characters, code) != nullptr;
}

bool isSpace(QChar c)
{
    return (c >= QChar(0x09) && c <= QChar(0x0d)) || c == QLatin1Char(' ') ||
           c == QChar(QChar::LineSeparator) || c == QChar(QChar::ParagraphSeparator);
}

/// What a text without quotation marks is made of.
bool isPlain(QChar c)
{
    return (c.unicode() < 0x80 && c.isLetterOrNumber()) || isOneOf(c, "_$/:.-");
}

bool isQuote(QChar c)
{
    return isOneOf(c, "\"'");
}

/// The value of a digit; -1 when it is none to that base.
int digit(QChar c, int base)
{
    const bool isDecimal = c >= QLatin1Char('0') && c <= QLatin1Char('9');
    const ushort lower = c.unicode() | 0x20;
    const int value = isDecimal ? c.unicode() - '0' : 10 + lower - 'a';
    return value >= (isDecimal ? 0 : 10) && value < base ? value : -1;
}

/// The character behind a backslash that is neither a number's nor its own.
QChar escapedLetter(QChar letter)
{
    const QString letters = QStringLiteral("abfnrtv");
    const auto found = letters.indexOf(letter);
    return found < 0 ? letter : QLatin1Char("\a\b\f\n\r\t\v"[found]);
}

class Reader
{
public:
    Reader(const QString &text, PropertyList::Sink &sink)
        : m_text(text)
        , m_sink(sink)
    {
    }

    /// Whether all of the text is one list.
    Result<> result()
    {
        skipSpace();
        if (startsText() ? readWithoutBraces() : readValue())
            expectEnd();
        return m_result;
    }

private:
    QChar at(int ahead = 0) const { return m_at + ahead < m_text.size() ? m_text.at(m_at + ahead) : QChar(); }

    bool isAtEnd() const { return m_at >= m_text.size(); }

    /// A text alone is a list, too.
    bool readWithoutBraces()
    {
        const int start = m_at;
        QString text;
        if (!readText(text))
            return false;
        skipSpace();
        if (isAtEnd()) {
            m_sink.scalar(text);
            return true;
        }
        m_at = start;
        return readEntries();
    }

    bool readValue()
    {
        skipSpace();
        if (++m_depth > PropertyListInput::maximumDepth)
            return fail(
                QStringLiteral("values are nested deeper than %1").arg(PropertyListInput::maximumDepth));
        const bool isRead = count() && readValueHere();
        --m_depth;
        return isRead;
    }

    bool readValueHere()
    {
        switch (at().unicode()) {
        case '{':
            ++m_at;
            return readEntries() && expect('}');
        case '(':
            ++m_at;
            return readItems() && expect(')');
        case '<':
            ++m_at;
            return readData() && expect('>');
        default:
            return readTextValue();
        }
    }

    bool readEntries()
    {
        m_sink.beginDictionary();
        for (skipSpace(); startsText(); skipSpace()) {
            if (!readEntry())
                return false;
        }
        m_sink.end();
        return true;
    }

    bool readEntry()
    {
        QString key;
        if (!count() || !readText(key))
            return false;
        m_sink.key(key);
        skipSpace();
        if (at() == QLatin1Char(';'))
            m_sink.scalar(key);
        else if (!expect('=') || !readValue())
            return false;
        return expect(';');
    }

    bool readItems()
    {
        m_sink.beginArray();
        for (skipSpace(); startsValue(); skipSpace()) {
            if (!readValue())
                return false;
            skipSpace();
            if (at() != QLatin1Char(','))
                break;
            ++m_at;
        }
        m_sink.end();
        return true;
    }

    bool readData()
    {
        QByteArray bytes;
        for (; !isAtEnd() && at() != QLatin1Char('>'); ++m_at) {
            if (isSpace(at()))
                continue;
            const int high = digit(at(), 16);
            const int low = digit(at(1), 16);
            if (high < 0 || low < 0)
                return failHere(QStringLiteral("a pair of hexadecimal digits"));
            bytes += static_cast<char>(high * 16 + low);
            ++m_at;
        }
        m_sink.scalar(bytes);
        return true;
    }

    bool readTextValue()
    {
        QString text;
        if (!readText(text))
            return false;
        m_sink.scalar(text);
        return true;
    }

    bool readText(QString &text)
    {
        if (!startsText())
            return failHere(QStringLiteral("a value"));
        if (isQuote(at()))
            return readQuoted(text);
        const int start = m_at;
        while (isPlain(at()))
            ++m_at;
        text = m_text.mid(start, m_at - start);
        return true;
    }

    bool readQuoted(QString &text)
    {
        const QChar quote = at();
        for (++m_at; !isAtEnd() && at() != quote; ++m_at)
            text += at() == QLatin1Char('\\') ? escape() : at();
        if (isAtEnd())
            return failHere(QStringLiteral("a quotation mark"));
        ++m_at;
        return true;
    }

    /// The character that begins with a backslash here; goes to its last one.
    QChar escape()
    {
        ++m_at;
        if (at() == QLatin1Char('U'))
            return QChar(static_cast<ushort>(number(m_at + 1, 4, 16)));
        if (digit(at(), 8) < 0)
            return escapedLetter(at());
        const int code = number(m_at, 3, 8) & 0xff;
        return QChar(code < 0x80 ? static_cast<char16_t>(code) : nextStepCharacters[code - 0x80]);
    }

    /// The number of at most so many digits; goes to its last one.
    int number(int start, int mostDigits, int base)
    {
        int value = 0;
        m_at = start;
        while (m_at - start < mostDigits && digit(at(), base) >= 0)
            value = value * base + digit(m_text.at(m_at++), base);
        --m_at;
        return value;
    }

    bool startsText() const { return isPlain(at()) || isQuote(at()); }

    bool startsValue() const { return startsText() || isOneOf(at(), "{(<"); }

    void skipSpace()
    {
        for (;;) {
            if (isSpace(at()))
                ++m_at;
            else if (at() == QLatin1Char('/') && isOneOf(at(1), "/*"))
                skipComment();
            else
                return;
        }
    }

    void skipComment()
    {
        static const QRegularExpression lineEnd(QStringLiteral("[\\n\\r\\x{2028}\\x{2029}]"));
        const bool isLine = at(1) == QLatin1Char('/');
        const auto end =
            isLine ? m_text.indexOf(lineEnd, m_at) : m_text.indexOf(QLatin1String("*/"), m_at + 2);
        m_at = static_cast<int>(end < 0 ? m_text.size() : end + (isLine ? 1 : 2));
    }

    void expectEnd()
    {
        skipSpace();
        if (!isAtEnd())
            failHere(QStringLiteral("the end"));
    }

    bool expect(char c)
    {
        skipSpace();
        if (at() != QLatin1Char(c))
            return failHere(QStringLiteral("\"%1\"").arg(QLatin1Char(c)));
        ++m_at;
        return true;
    }

    bool count()
    {
        if (++m_nodes > PropertyListInput::maximumNodes)
            return fail(QStringLiteral("more than %1 keys and values").arg(PropertyListInput::maximumNodes));
        return true;
    }

    bool failHere(const QString &wanted)
    {
        const QString found = isAtEnd() ? QStringLiteral("the end")
                                        : QStringLiteral("\"%1\"").arg(printableText(QString(at())));
        return fail(QStringLiteral("%1 stands where %2 is expected").arg(found, wanted));
    }

    bool fail(const QString &problem)
    {
        const auto line = m_text.left(m_at).count(QLatin1Char('\n')) + 1;
        m_result = Problem{{}, QStringLiteral("line %1: %2").arg(QString::number(line), problem)};
        return false;
    }

    const QString m_text;
    PropertyList::Sink &m_sink;
    Result<> m_result;
    int m_at = 0;
    int m_depth = 0;
    int m_nodes = 0;
};

} // namespace

Result<> OldStylePropertyList::read(const QByteArray &utf8, PropertyList::Sink &sink)
{
    if (utf8.isEmpty())
        return Problem{{}, QStringLiteral("it is empty")};
    const QString text = QString::fromUtf8(utf8);
    if (utf8.contains('\0') || text.toUtf8() != utf8)
        return Problem{{}, QStringLiteral("it is no text")};
    return Reader(text, sink).result();
}
