// SPDX-License-Identifier: Apache-2.0
#include "config/JsonReader.h"

#include "core/PrintableText.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <optional>

namespace {

using Json::Place;
using Json::Type;
using Json::Value;

/// How each thing begins; all else is no JSON.
constexpr char16_t openObject = u'{';
constexpr char16_t closeObject = u'}';
constexpr char16_t openList = u'[';
constexpr char16_t closeList = u']';
constexpr char16_t quote = u'"';

bool isBlank(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\n') || c == QLatin1Char('\r') ||
           c == QLatin1Char('\t');
}

bool isPartOfWord(QChar c)
{
    const char16_t unit = c.unicode();
    return (unit < 0x80 && c.isLetterOrNumber()) || unit == u'-' || unit == u'+' || unit == u'.';
}

bool isNumber(const QString &word)
{
    static const QRegularExpression number(
        QStringLiteral("\\A-?(?:0|[1-9][0-9]*)(?:\\.[0-9]+)?(?:[eE][-+]?[0-9]+)?\\z"));
    constexpr int longest = 64;
    return word.size() <= longest && number.match(word).hasMatch();
}

class Reading
{
public:
    explicit Reading(const QString &text)
        : m_text(text)
    {
    }

    Result<Value> run(Place *wrongAt)
    {
        Value value;
        readValue(value);
        skipBlanks();
        if (m_problem.isEmpty() && !isAtEnd())
            fail(QStringLiteral("there is more behind the value"));
        if (m_problem.isEmpty())
            return value;
        if (!wrongAt)
            return Problem{{}, m_wrongAt.text() + QStringLiteral(": ") + m_problem};
        *wrongAt = m_wrongAt;
        return Problem{{}, m_problem};
    }

private:
    bool isAtEnd() const { return m_at == m_text.size(); }
    char16_t current() const { return isAtEnd() ? u'\0' : m_text.at(m_at).unicode(); }

    void fail(const QString &what) { failAt(m_place, what); }

    void failAt(const Place &place, const QString &what)
    {
        if (!m_problem.isEmpty())
            return;
        m_problem = what;
        m_wrongAt = place;
    }

    /// What is not wanted here, for a message.
    QString found() const
    {
        return isAtEnd() ? QStringLiteral("the end")
                         : QLatin1Char('"') + printableText(QString(m_text.at(m_at))) + QLatin1Char('"');
    }

    void advance()
    {
        const QChar passed = m_text.at(m_at++);
        if (passed == QLatin1Char('\n'))
            m_place = {m_place.line + 1, 1};
        else if (!passed.isLowSurrogate())
            ++m_place.column;
    }

    void skipBlanks()
    {
        while (!isAtEnd() && isBlank(m_text.at(m_at)))
            advance();
    }

    bool take(char16_t expected)
    {
        if (isAtEnd() || current() != expected)
            return false;
        advance();
        return true;
    }

    bool goesOn() const { return m_problem.isEmpty(); }

    void readValue(Value &value)
    {
        skipBlanks();
        value.place = m_place;
        if (++m_values > Json::maximumValues)
            return fail(QStringLiteral("more than %1 values").arg(Json::maximumValues));
        if (current() == openObject)
            return readAll(value, Type::Object, closeObject);
        if (current() == openList)
            return readAll(value, Type::List, closeList);
        if (current() == quote) {
            value.type = Type::Text;
            value.text = readText();
            return;
        }
        readWord(value);
    }

    /// The values of an object or a list, with commas between them.
    void readAll(Value &value, Type type, char16_t end)
    {
        value.type = type;
        if (++m_depth > Json::maximumDepth)
            return fail(QStringLiteral("nested deeper than %1").arg(Json::maximumDepth));
        advance();
        skipBlanks();
        if (!take(end)) {
            QSet<QString> names;
            do
                readItem(value, names);
            while (goesOn() && take(u','));
            if (goesOn() && !take(end))
                fail(QStringLiteral("expected \",\" or \"%1\", not %2").arg(QChar(end)).arg(found()));
        }
        --m_depth;
    }

    void readItem(Value &parent, QSet<QString> &names)
    {
        Value item;
        if (parent.type == Type::Object)
            readName(item, names);
        if (goesOn())
            readValue(item);
        skipBlanks();
        parent.values.push_back(std::move(item));
    }

    void readName(Value &item, QSet<QString> &names)
    {
        skipBlanks();
        item.namePlace = m_place;
        if (current() != quote)
            return fail(QStringLiteral("expected a name in quotes, not %1").arg(found()));
        item.name = readText();
        if (goesOn() && names.contains(item.name))
            return failAt(item.namePlace,
                          QStringLiteral("\"%1\" stands there twice").arg(printableStart(item.name, 64)));
        names.insert(item.name);
        skipBlanks();
        if (goesOn() && !take(u':'))
            fail(QStringLiteral("expected \":\", not %1").arg(found()));
    }

    void readWord(Value &value)
    {
        const auto start = m_at;
        while (!isAtEnd() && isPartOfWord(m_text.at(m_at)))
            advance();
        const QString word = m_text.mid(start, m_at - start);
        value.text = word;
        if (isNumber(word))
            value.type = Type::Number;
        else if (word == QLatin1String("true") || word == QLatin1String("false"))
            value.type = Type::Boolean;
        else if (word != QLatin1String("null"))
            failAt(value.place, QStringLiteral("expected a value, not %1")
                                    .arg(word.isEmpty() ? found() : printableStart(word, 64)));
        value.isTrue = word == QLatin1String("true");
    }

    QString readText()
    {
        const Place start = m_place;
        QString text;
        advance();
        while (goesOn() && !isAtEnd() && current() != quote)
            text += readUnit();
        if (goesOn() && !take(quote))
            failAt(start, QStringLiteral("the text has no end"));
        if (goesOn() && !text.isValidUtf16())
            failAt(start, QStringLiteral("the text holds half of a surrogate pair"));
        return text;
    }

    QChar readUnit()
    {
        const QChar c = m_text.at(m_at);
        if (c < QLatin1Char(' '))
            fail(QStringLiteral("a text holds the control character %1").arg(found()));
        if (c == QLatin1Char('\\'))
            return readEscape();
        advance();
        return c;
    }

    QChar readEscape()
    {
        static const QString letters = QStringLiteral("\"\\/bfnrt");
        static const QString meanings = QStringLiteral("\"\\/\b\f\n\r\t");
        const Place place = m_place;
        advance();
        if (current() == u'u')
            return readUnicodeEscape(place);
        const auto which = isAtEnd() ? -1 : letters.indexOf(m_text.at(m_at));
        if (which < 0) {
            failAt(place, QStringLiteral("unknown escape \\%1").arg(found()));
            return {};
        }
        advance();
        return meanings.at(which);
    }

    QChar readUnicodeEscape(const Place &place)
    {
        static const QRegularExpression digits(QStringLiteral("\\A[0-9A-Fa-f]{4}\\z"));
        const QString code = m_text.mid(m_at + 1, 4);
        const QChar unit(code.toUShort(nullptr, 16));
        if (!digits.match(code).hasMatch() || unit.isNull()) {
            failAt(place, QStringLiteral("\\u needs four hexadecimal digits other than 0000"));
            return {};
        }
        for (int i = 0; i < 5; ++i)
            advance();
        return unit;
    }

    const QString &m_text;
    decltype(m_text.size()) m_at = 0;
    Place m_place{1, 1};
    int m_depth = 0;
    int m_values = 0;
    QString m_problem;
    Place m_wrongAt;
};

} // namespace

const Json::Value *Json::Value::member(const QString &wanted) const
{
    const auto found =
        std::find_if(values.begin(), values.end(), [&](const Value &value) { return value.name == wanted; });
    return found == values.end() ? nullptr : &*found;
}

Result<Json::Value> Json::read(const QByteArray &bytes, Place *wrongAt)
{
    if (bytes.size() > maximumBytes)
        return Problem{{}, QStringLiteral("it is larger than %1 MiB").arg(maximumBytes / (1024 * 1024))};
    QByteArray utf8 = bytes;
    if (utf8.startsWith("\xef\xbb\xbf"))
        utf8.remove(0, 3);
    // With its length, because Qt 5 ends at a NUL otherwise.
    const QString text = QString::fromUtf8(utf8.constData(), static_cast<int>(utf8.size()));
    if (text.toUtf8() != utf8)
        return Problem{{}, QStringLiteral("it is not in UTF-8")};
    return Reading(text).run(wrongAt);
}
