// SPDX-License-Identifier: Apache-2.0
#include "hosttools/profiles/XmlList.h"

#include "hosttools/base/Error.h"
#include "hosttools/base/XmlEncoding.h"

#include <QVector>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>
#include <memory>

using namespace FlatPkg;

namespace {

constexpr std::array<const char *, 3> containers = {"plist", "dict", "array"};
constexpr std::array<const char *, 8> scalars = {"key",  "string", "integer", "real",
                                                 "date", "data",   "true",    "false"};

template <std::size_t Size> bool isOneOf(const std::array<const char *, Size> &names, const QByteArray &name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

bool isSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

QByteArray withoutSpaceInFront(const QByteArray &text)
{
    const auto *start = std::find_if_not(text.begin(), text.end(), isSpace);
    return text.mid(int(start - text.begin()));
}

/// The decimal form; empty when it is no integer of 64 bits. Space may stand in front of sign and digits.
QByteArray decimal(const QByteArray &text)
{
    QByteArray rest = withoutSpaceInFront(text);
    const bool isNegative = rest.startsWith('-');
    if (isNegative || rest.startsWith('+'))
        rest = withoutSpaceInFront(rest.mid(1));
    const bool isHex = rest.startsWith("0x") || rest.startsWith("0X");
    const QByteArray digits = isHex ? rest.mid(2) : rest;
    const auto isAllowed = [isHex](char c) { return isDigit(c) || (isHex && std::isxdigit(uchar(c)) != 0); };
    bool fits = !digits.isEmpty() && std::all_of(digits.begin(), digits.end(), isAllowed);
    const quint64 value = fits ? digits.toULongLong(&fits, isHex ? 16 : 10) : 0;
    if (!fits || (isNegative && value > (quint64(1) << 63)))
        return {};
    return (isNegative && value > 0 ? "-" : "") + QByteArray::number(value);
}

/// The decimal form; empty when it is no real number.
QByteArray realNumber(const QByteArray &text)
{
    QByteArray word = text.toLower();
    if (word.startsWith('+'))
        word.remove(0, 1);
    for (const auto *special : {"nan", "inf", "-inf", "infinity", "-infinity"})
        if (word == special)
            return special;
    const bool isPlain = std::all_of(text.begin(), text.end(), [](char c) {
        return isDigit(c) || isSpace(c) || std::strchr("+-.eE", c) != nullptr;
    });
    bool isNumber = false;
    const QByteArray rest = withoutSpaceInFront(text);
    rest.toDouble(&isNumber);
    return isPlain && isNumber && !isSpace(rest.at(rest.size() - 1)) ? rest : QByteArray();
}

/// Whether each digit in the pattern meets a digit, and all else itself.
bool hasForm(const QByteArray &text, const QByteArray &pattern)
{
    return text.size() == pattern.size() &&
           std::equal(text.begin(), text.end(), pattern.begin(),
                      [](char c, char wanted) { return wanted == '0' ? isDigit(c) : c == wanted; });
}

bool isDate(const QByteArray &text)
{
    const QByteArray unsignedText = text.startsWith('-') ? text.mid(1) : text;
    const auto year = unsignedText.indexOf('-');
    const QByteArray digits = unsignedText.left(year);
    return year > 0 && std::all_of(digits.begin(), digits.end(), isDigit) &&
           hasForm(unsignedText.mid(year), "-00-00T00:00:00Z");
}

QByteArray escaped(QByteArray text)
{
    return text.replace('&', "&amp;").replace('<', "&lt;").replace('>', "&gt;");
}

/// What an element that holds no others is in its simplest form.
QByteArray simplifiedScalar(const QByteArray &name, const QByteArray &text)
{
    QByteArray value = escaped(text);
    if (name == "integer")
        value = decimal(text);
    else if (name == "real")
        value = realNumber(text);
    else if (name == "data")
        value = QByteArray::fromBase64(text).toBase64();
    const bool mayBeEmpty = name != "integer" && name != "real";
    const bool isSwitch = name == "true" || name == "false";
    if ((value.isEmpty() && !mayBeEmpty) || (name == "date" && !isDate(text)) ||
        (isSwitch && !text.isEmpty()))
        throw Error("\"" + text.left(64) + "\" is not valid in <" + name + '>');
    return '<' + name + '>' + value + "</" + name + '>';
}

struct Level
{
    QByteArray name; ///< empty around everything
    int children = 0;
};

class Simplifying
{
public:
    Simplifying(const QByteArray &xml, int mostLevels)
        : m_mostLevels(mostLevels)
        , m_parser(newXmlParser(xml))
    {
        XML_SetUserData(m_parser.get(), this);
        XML_SetElementHandler(
            m_parser.get(),
            [](void *self, const char *name, const char **) { guarded(self, [&] { of(self).begin(name); }); },
            [](void *self, const char *) { guarded(self, [&] { of(self).end(); }); });
        XML_SetCharacterDataHandler(m_parser.get(), [](void *self, const char *text, int length) {
            guarded(self, [&] { of(self).take(QByteArray::fromRawData(text, length)); });
        });
        refuseWhatListsDoNotHave();
    }

    QByteArray run(const QByteArray &xml)
    {
        const XML_Status status = XML_Parse(m_parser.get(), xml.constData(), int(xml.size()), XML_TRUE);
        if (m_problem.isEmpty() && status != XML_STATUS_OK)
            m_problem = XML_ErrorString(XML_GetErrorCode(m_parser.get()));
        if (m_problem.isEmpty())
            return "<plist version=\"1.0\">" + m_result + "</plist>";
        throw Error("is not a property list: line " +
                    QByteArray::number(qulonglong(XML_GetCurrentLineNumber(m_parser.get()))) + ": " +
                    m_problem);
    }

private:
    static Simplifying &of(void *self) { return *static_cast<Simplifying *>(self); }

    /// No exception may pass through the parser; after one it calls again for what it has at hand.
    template <typename Work> static void guarded(void *self, Work work)
    {
        if (!of(self).m_problem.isEmpty())
            return;
        try {
            work();
        } catch (const Error &error) {
            of(self).m_problem = error.message();
            XML_StopParser(of(self).m_parser.get(), XML_FALSE);
        }
    }

    void refuseWhatListsDoNotHave()
    {
        XML_SetStartDoctypeDeclHandler(
            m_parser.get(), [](void *self, const char *, const char *, const char *, int declares) {
                guarded(self, [declares] {
                    if (declares != 0)
                        throw Error("its document type declares something");
                });
            });
        XML_SetSkippedEntityHandler(m_parser.get(), [](void *self, const char *, int) {
            guarded(self, [] { throw Error("a reference to an entity that nothing declares"); });
        });
        XML_SetCommentHandler(m_parser.get(),
                              [](void *self, const char *) { guarded(self, [&] { of(self).interrupt(); }); });
        XML_SetProcessingInstructionHandler(m_parser.get(), [](void *self, const char *, const char *) {
            guarded(self, [&] { of(self).interrupt(); });
        });
    }

    bool isInScalar() const { return isOneOf(scalars, m_levels.last().name); }

    void begin(const QByteArray &name)
    {
        Level &outer = m_levels.last();
        if (!isOneOf(containers, name) && !isOneOf(scalars, name))
            throw Error("there is no element \"" + name.left(64) + "\" in one");
        if (isInScalar())
            throw Error("an element stands inside a value");
        if (outer.children > 0 && (outer.name.isEmpty() || outer.name == "plist"))
            throw Error("it holds more than one value");
        if (outer.name == "dict" && outer.children % 2 == 0 && name != "key")
            throw Error("a value has no key");
        if (m_levels.size() > m_mostLevels)
            throw Error("is nested more than " + QByteArray::number(m_mostLevels) + " levels deep");
        ++outer.children;
        m_levels.append({name, 0});
        m_text.clear();
        if (name == "dict" || name == "array")
            m_result += '<' + name + '>';
    }

    void end()
    {
        const bool wasInScalar = isInScalar();
        // The end of an element that is one tag has no bytes of its own.
        if (m_levels.last().name == "data" && XML_GetCurrentByteCount(m_parser.get()) == 0)
            throw Error("<data/> is not valid");
        const Level level = m_levels.takeLast();
        if (level.name == "plist" && level.children == 0)
            throw Error("it holds no value");
        if (level.name == "dict" && level.children % 2 != 0)
            throw Error("a key has no value");
        if (wasInScalar)
            m_result += simplifiedScalar(nameBehindKeys(level.name), m_text);
        else if (level.name != "plist")
            m_result += "</" + level.name + '>';
    }

    /// A key that stands for a value is a text.
    QByteArray nameBehindKeys(const QByteArray &name) const
    {
        const Level &outer = m_levels.last();
        const bool isKey = outer.name == "dict" && outer.children % 2 != 0;
        return name == "key" && !isKey ? QByteArrayLiteral("string") : name;
    }

    void take(const QByteArray &text)
    {
        if (isInScalar())
            m_text.append(text.constData(), text.size());
        else if (!std::all_of(text.begin(), text.end(), isSpace))
            throw Error("there is text between the elements");
    }

    void interrupt() const
    {
        if (isInScalar())
            throw Error("a value is interrupted");
    }

    struct ParserDeleter
    {
        void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
    };

    const int m_mostLevels;
    const std::unique_ptr<std::remove_pointer_t<XML_Parser>, ParserDeleter> m_parser;
    QVector<Level> m_levels{Level()};
    QByteArray m_text; ///< of the value that has begun
    QByteArray m_result;
    QByteArray m_problem;
};

} // namespace

QByteArray XmlList::simplified(const QByteArray &xml, int mostLevels)
{
    const QByteArray list = withoutSpaceInFront(xml);
    return Simplifying(list, mostLevels).run(list);
}
