// SPDX-License-Identifier: Apache-2.0
#include "hosttools/base/XmlReader.h"

#include "hosttools/base/Error.h"
#include "hosttools/base/Interrupt.h"
#include "hosttools/base/XmlEncoding.h"

#include <algorithm>
#include <cstring>
#include <expat.h>
#include <QPair>
#include <utility>
#include <vector>

namespace FlatPkg {

namespace {

constexpr int pieceSize = 256 * 1024;
constexpr int longestTag = 1024 * 1024;

using Attribute = QPair<QByteArray, QByteArray>;

/// The start or the end of an element.
struct Event
{
    bool isStart = false;
    QByteArray name;
    QVector<Attribute> attributes;
    QByteArray text; ///< between the event before and this one
};

QByteArray withoutPrefix(const char *name)
{
    const char *colon = std::strrchr(name, ':');
    return QByteArray(colon ? colon + 1 : name);
}

} // namespace

/// Expat calls; this turns its calls round. It stops at every event, and is asked to go on for the next one.
class XmlReader::Parser
{
public:
    Parser(const QByteArray &document, QByteArray subject, const XmlLimits &limits);

    /// Moves to the next event; false at the end of the document.
    bool next();
    Event &current() { return m_current; }
    const QByteArray &encoding() const { return m_encoding; }
    [[noreturn]] void fail(const QByteArray &what) const { throw Error(m_subject + what); }

private:
    void proceed();
    XML_Status feed();
    void refuse(const char *what);
    void add(Event event);
    void startElement(const char *name, const char **attributes);
    const char *whatExceeds(const char *name, const char **attributes) const;
    bool hasLongName(const char **attributes) const;

    static Parser &self(void *parser) { return *static_cast<Parser *>(parser); }
    static void onStart(void *parser, const char *name, const char **attributes)
    {
        self(parser).startElement(name, attributes);
    }
    static void onEnd(void *parser, const char *name);
    static void onCharacters(void *parser, const char *text, int length)
    {
        self(parser).m_text.append(text, length);
    }
    static void onDeclaration(void *parser, const char *version, const char *encoding, int standalone);
    static void onDoctype(void *parser, const char *name, const char *system, const char *identifier,
                          int subset);

    const QByteArray &m_document;
    QByteArray m_subject;
    XmlLimits m_limits;
    std::unique_ptr<XML_ParserStruct, void (*)(XML_Parser)> m_expat;
    int m_fed = 0; ///< bytes that Expat has
    bool m_suspended = false;
    bool m_finished = false;
    const char *m_refusal = nullptr;
    QByteArray m_encoding;
    int m_elements = 0;
    int m_level = 0;
    QByteArray m_text;
    std::vector<Event> m_events; ///< found and not handed out yet: an empty element makes two at once
    size_t m_handedOut = 0;
    Event m_current;
};

XmlReader::Parser::Parser(const QByteArray &document, QByteArray subject, const XmlLimits &limits)
    : m_document(document)
    , m_subject(std::move(subject))
    , m_limits(limits)
    , m_expat(newXmlParser(document), XML_ParserFree)
{
    if (!m_expat)
        throw std::bad_alloc();
    XML_SetUserData(m_expat.get(), this);
    XML_SetElementHandler(m_expat.get(), onStart, onEnd);
    XML_SetCharacterDataHandler(m_expat.get(), onCharacters);
    XML_SetXmlDeclHandler(m_expat.get(), onDeclaration);
    XML_SetStartDoctypeDeclHandler(m_expat.get(), onDoctype);
}

bool XmlReader::Parser::next()
{
    while (m_handedOut == m_events.size()) {
        if (m_finished)
            return false;
        m_events.clear();
        m_handedOut = 0;
        proceed();
    }
    m_current = std::move(m_events[m_handedOut++]);
    return true;
}

void XmlReader::Parser::proceed()
{
    Interrupt::check();
    const XML_Status status = m_suspended ? XML_ResumeParser(m_expat.get()) : feed();
    if (m_refusal)
        fail(m_refusal);
    if (status == XML_STATUS_ERROR)
        fail("is not well-formed: line " +
             QByteArray::number(static_cast<qulonglong>(XML_GetCurrentLineNumber(m_expat.get()))) + ": " +
             XML_ErrorString(XML_GetErrorCode(m_expat.get())));
    m_suspended = status == XML_STATUS_SUSPENDED;
    m_finished = !m_suspended && m_fed == m_document.size();
}

/// Expat hands over a tag when it is complete, with whatever it holds by then, and begins to read it again
/// with every piece: so no tag may be long.
XML_Status XmlReader::Parser::feed()
{
    if (m_fed - XML_GetCurrentByteIndex(m_expat.get()) > longestTag) {
        refuse("has a tag or a comment that is too long");
        return XML_STATUS_ERROR;
    }
    const int count = std::min(pieceSize, static_cast<int>(m_document.size()) - m_fed);
    const char *piece = m_document.constData() + m_fed;
    m_fed += count;
    return XML_Parse(m_expat.get(), piece, count, m_fed == m_document.size());
}

/// An exception must not pass through Expat, so it is thrown when Expat has returned.
void XmlReader::Parser::refuse(const char *what)
{
    if (!m_refusal)
        m_refusal = what;
    XML_StopParser(m_expat.get(), XML_FALSE);
}

void XmlReader::Parser::add(Event event)
{
    event.text = std::exchange(m_text, QByteArray());
    m_events.push_back(std::move(event));
    XML_StopParser(m_expat.get(), XML_TRUE);
}

void XmlReader::Parser::startElement(const char *name, const char **attributes)
{
    ++m_elements;
    ++m_level;
    if (const char *excess = whatExceeds(name, attributes))
        return refuse(excess);
    Event event{true, withoutPrefix(name), {}, {}};
    for (; *attributes; attributes += 2)
        event.attributes.append(Attribute(attributes[0], attributes[1]));
    add(std::move(event));
}

const char *XmlReader::Parser::whatExceeds(const char *name, const char **attributes) const
{
    if (m_elements > m_limits.elements)
        return "has too many elements";
    if (m_level > m_limits.levels)
        return "is nested too deeply";
    if (XML_GetSpecifiedAttributeCount(m_expat.get()) / 2 > m_limits.attributes)
        return "has an element with too many attributes";
    if (std::strlen(name) > size_t(m_limits.nameLength) || hasLongName(attributes))
        return "has a name that is too long";
    return nullptr;
}

bool XmlReader::Parser::hasLongName(const char **attributes) const
{
    for (; *attributes; attributes += 2)
        if (std::strlen(*attributes) > size_t(m_limits.nameLength))
            return true;
    return false;
}

void XmlReader::Parser::onEnd(void *parser, const char *name)
{
    --self(parser).m_level;
    self(parser).add({false, withoutPrefix(name), {}, {}});
}

void XmlReader::Parser::onDeclaration(void *parser, const char * /*version*/, const char *encoding,
                                      int /*standalone*/)
{
    self(parser).m_encoding = encoding;
}

void XmlReader::Parser::onDoctype(void *parser, const char * /*name*/, const char * /*system*/,
                                  const char * /*identifier*/, int /*subset*/)
{
    self(parser).refuse("has a document type definition");
}

XmlReader::XmlReader(const QByteArray &document, const QByteArray &subject, const XmlLimits &limits)
    : m_parser(std::make_unique<Parser>(document, subject, limits))
{
}

XmlReader::~XmlReader() = default;

bool XmlReader::readNextStartElement()
{
    return m_parser->next() && m_parser->current().isStart;
}

void XmlReader::skipCurrentElement()
{
    for (int open = 1; open > 0 && m_parser->next();)
        open += m_parser->current().isStart ? 1 : -1;
}

void XmlReader::readToEnd()
{
    while (m_parser->next()) {
    }
}

QByteArray XmlReader::readText()
{
    if (readNextStartElement())
        m_parser->fail("is not well-formed: \"" + name() + "\" stands where only text may be");
    return m_parser->current().text;
}

QByteArray XmlReader::readAllText()
{
    QByteArray text;
    for (int open = 1; open > 0 && m_parser->next();) {
        text += m_parser->current().text;
        open += m_parser->current().isStart ? 1 : -1;
    }
    return text;
}

const QByteArray &XmlReader::name() const
{
    return m_parser->current().name;
}

QByteArray XmlReader::attribute(const char *name) const
{
    for (const Attribute &attribute : m_parser->current().attributes)
        if (attribute.first == name)
            return attribute.second;
    return QByteArray();
}

QByteArray XmlReader::encoding() const
{
    return m_parser->encoding();
}

} // namespace FlatPkg
