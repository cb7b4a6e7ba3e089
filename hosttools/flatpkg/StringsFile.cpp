// SPDX-License-Identifier: Apache-2.0
#include "hosttools/flatpkg/StringsFile.h"

#include <QVector>

#include <cstring>
#include <utility>

namespace FlatPkg {

namespace {

class StringsParser
{
public:
    explicit StringsParser(const QString &text)
        : m_text(text)
    {
    }

    std::optional<QString> lastOf(const QString &wanted)
    {
        std::optional<QString> found;
        while (const std::optional<QString> key = readToken()) {
            std::optional<QString> value = accept('=') ? readToken() : std::nullopt;
            if (!value || !accept(';'))
                break;
            if (*key == wanted)
                found = std::move(value);
        }
        return found;
    }

private:
    bool atEnd() const { return m_position >= m_text.size(); }
    QChar current() const { return m_text.at(m_position); }
    bool startsWith(const char *text) const
    {
        return QStringView(m_text).mid(m_position).startsWith(QLatin1String(text));
    }
    /// Moves behind the next occurrence of the text, or to the end.
    void skipPast(const char *text)
    {
        const QLatin1String wanted(text);
        const auto found = m_text.indexOf(wanted, m_position);
        m_position = static_cast<int>(found < 0 ? m_text.size() : found + wanted.size());
    }

    void skipSpaceAndComments();
    bool accept(char wanted);
    std::optional<QString> readToken();
    std::optional<QString> readQuoted();
    QChar readEscape();

    const QString &m_text;
    int m_position = 0;
};

void StringsParser::skipSpaceAndComments()
{
    while (!atEnd()) {
        if (startsWith("/*"))
            skipPast("*/");
        else if (startsWith("//"))
            skipPast("\n");
        else if (current().isSpace())
            ++m_position;
        else
            return;
    }
}

bool StringsParser::accept(char wanted)
{
    skipSpaceAndComments();
    if (atEnd() || current() != QLatin1Char(wanted))
        return false;
    ++m_position;
    return true;
}

std::optional<QString> StringsParser::readToken()
{
    if (accept('"'))
        return readQuoted();
    const int start = m_position;
    const auto isBare = [](QChar c) {
        return c.isLetterOrNumber() || c == QLatin1Char('_') || c == QLatin1Char('.') ||
               c == QLatin1Char('-');
    };
    while (!atEnd() && isBare(current()))
        ++m_position;
    return m_position > start ? std::make_optional(m_text.mid(start, m_position - start)) : std::nullopt;
}

std::optional<QString> StringsParser::readQuoted()
{
    QString token;
    while (!atEnd()) {
        const QChar character = m_text.at(m_position++);
        if (character == QLatin1Char('"'))
            return token;
        if (character == QLatin1Char('\\') && !atEnd())
            token += readEscape();
        else
            token += character;
    }
    return std::nullopt;
}

QChar StringsParser::readEscape()
{
    const QChar kind = m_text.at(m_position++);
    if (kind == QLatin1Char('n'))
        return QLatin1Char('\n');
    if (kind == QLatin1Char('t'))
        return QLatin1Char('\t');
    bool isNumber = false;
    const ushort code = m_text.mid(m_position, 4).toUShort(&isNumber, 16);
    if (kind.toLower() != QLatin1Char('u') || !isNumber)
        return kind;
    m_position += 4;
    return QChar(code);
}

const QByteArray bigEndianMark = QByteArrayLiteral("\xFE\xFF");
const QByteArray littleEndianMark = QByteArrayLiteral("\xFF\xFE");

/// Text of a byte order that its first two bytes say.
QString fromMarkedUtf16(const QByteArray &bytes)
{
    QVector<char16_t> units(bytes.size() / 2);
    std::memcpy(units.data(), bytes.constData(), std::size_t(units.size()) * sizeof(char16_t));
    return QString::fromUtf16(units.constData(), units.size());
}

} // namespace

std::optional<QString> textIn(const QString &table, const QString &key)
{
    return StringsParser(table).lastOf(key);
}

QString decodeStrings(const QByteArray &bytes)
{
    const QByteArray start = bytes.left(2);
    if (start == bigEndianMark || start == littleEndianMark)
        return fromMarkedUtf16(bytes);
    // A table begins with a quote, a comment, a letter or a space: a NUL in the first two bytes is half of
    // one.
    if (start.startsWith('\0'))
        return fromMarkedUtf16(bigEndianMark + bytes);
    if (start.endsWith('\0'))
        return fromMarkedUtf16(littleEndianMark + bytes);
    return QString::fromUtf8(bytes);
}

} // namespace FlatPkg
