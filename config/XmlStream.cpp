// SPDX-License-Identifier: Apache-2.0
#include "config/XmlStream.h"

#include "config/XmlEncoding.h"

#include <array>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

namespace {

using XmlStream::Attribute;

struct ParserDeleter
{
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};

using Parser = std::unique_ptr<std::remove_pointer_t<XML_Parser>, ParserDeleter>;

/// The one control character of ASCII that Expat lets through.
constexpr char deleteCharacter = 0x7f;

/// References that stand in a start tag and are known without declarations.
bool isDeclaredNowhere(const QByteArray &reference)
{
    return !reference.startsWith("&#") && !reference.startsWith("&lt;") && !reference.startsWith("&gt;") &&
           !reference.startsWith("&amp;") && !reference.startsWith("&quot;") &&
           !reference.startsWith("&apos;");
}

/// Qt takes a U+FEFF in front for a byte order mark and drops it, but never more than one.
QString decoded(const char *text, std::size_t length)
{
    const QString withoutMark = QString::fromUtf8(text, static_cast<int>(length));
    const bool beginsWithMark = length >= 3 && std::memcmp(text, "\xef\xbb\xbf", 3) == 0;
    return beginsWithMark ? QChar(QChar::ByteOrderMark) + withoutMark : withoutMark;
}

QString decoded(const std::string &text)
{
    return decoded(text.data(), text.size());
}

QString decoded(const char *text)
{
    return text ? decoded(text, std::strlen(text)) : QString();
}

/// Decodes a text that a document holds again and again, such as a name, only now and then. Equal texts share
/// their memory.
class DecodedTexts
{
public:
    QString of(const char *text)
    {
        const std::string_view bytes(text);
        if (bytes.size() > longest)
            return decoded(text, bytes.size());
        Known &known = m_known[std::hash<std::string_view>()(bytes) % m_known.size()];
        if (known.bytes != bytes)
            known = {std::string(bytes), decoded(text, bytes.size())};
        return known.text;
    }

private:
    struct Known
    {
        std::string bytes;
        QString text = QLatin1String("");
    };

    static constexpr std::size_t longest = 1024;

    std::array<Known, 256> m_known;
};

class Reading : private XmlStream::Locator
{
public:
    Reading(const QByteArray &xml, XmlStream::Handler &handler, const XmlStream::Limits &limits)
        : m_xml(xml)
        , m_handler(handler)
        , m_limits(limits)
        , m_parser(XmlEncoding::newParser(xml))
    {
        XML_SetUserData(m_parser.get(), this);
        observeProlog();
        observeContent();
        m_handler.begin(*this);
    }

    /// Whether all of the document could be read.
    Result<> result()
    {
        // In one piece: a token that is cut would be read again from its start with every piece.
        const XML_Status status =
            XML_Parse(m_parser.get(), m_xml.constData(), static_cast<int>(m_xml.size()), XML_TRUE);
        if (isGoingOn() && status != XML_STATUS_OK)
            return located(decoded(XML_ErrorString(XML_GetErrorCode(m_parser.get()))));
        return m_result;
    }

private:
    static Reading &of(void *self) { return *static_cast<Reading *>(self); }

    void observeProlog()
    {
        XML_SetXmlDeclHandler(m_parser.get(),
                              [](void *self, const char *version, const char *encoding, int standalone) {
                                  of(self).declaration(version, encoding, standalone == 1);
                              });
        XML_SetStartDoctypeDeclHandler(m_parser.get(),
                                       [](void *self, const char *name, const char *, const char *,
                                          int declares) { of(self).documentType(name, declares != 0); });
        XML_SetSkippedEntityHandler(m_parser.get(),
                                    [](void *self, const char *, int) { of(self).stop(undeclared()); });
    }

    void observeContent()
    {
        XML_SetElementHandler(
            m_parser.get(),
            [](void *self, const char *name, const char **attributes) {
                of(self).startElement(name, attributes);
            },
            [](void *self, const char *) { of(self).endElement(); });
        XML_SetCharacterDataHandler(m_parser.get(), [](void *self, const char *text, int length) {
            of(self).m_text.append(text, static_cast<std::size_t>(length));
        });
        XML_SetCdataSectionHandler(
            m_parser.get(), [](void *self) { of(self).flushText(); }, [](void *self) { of(self).cdata(); });
        XML_SetCommentHandler(m_parser.get(), [](void *self, const char *text) { of(self).comment(text); });
        XML_SetProcessingInstructionHandler(m_parser.get(),
                                            [](void *self, const char *target, const char *data) {
                                                of(self).processingInstruction(target, data);
                                            });
    }

    void declaration(const char *version, const char *encoding, bool standalone)
    {
        take(m_handler.declaration(decoded(version), decoded(encoding), standalone));
    }

    void documentType(const char *name, bool declares)
    {
        m_hasDocumentType = true;
        takeName(name);
        if (isGoingOn())
            take(m_handler.documentType(decoded(name)));
        if (declares)
            stop(QStringLiteral("its document type declares entities or elements"));
    }

    void startElement(const char *name, const char **attributes)
    {
        flushText();
        const int count = XML_GetSpecifiedAttributeCount(m_parser.get()) / 2;
        if (++m_depth > XmlStream::maximumDepth)
            return stop(QStringLiteral("elements are nested deeper than %1").arg(XmlStream::maximumDepth));
        if (count > XmlStream::maximumAttributes)
            return stop(
                QStringLiteral("more than %1 attributes in one element").arg(XmlStream::maximumAttributes));
        takeNodes(1 + count);
        takeName(name);
        takeAttributes(attributes);
        if (isGoingOn())
            take(m_handler.startElement(m_texts.of(name), decodedAttributes(attributes)));
    }

    void endElement()
    {
        flushText();
        --m_depth;
        // The end of an element that is one tag has no bytes of its own.
        if (isGoingOn() && XML_GetCurrentByteCount(m_parser.get()) == 0)
            take(m_handler.emptyTag());
        if (isGoingOn())
            take(m_handler.endElement());
    }

    void cdata()
    {
        takeNodes(1);
        takeCharacters(m_text.c_str());
        if (isGoingOn())
            take(m_handler.cdata(decoded(m_text)));
        m_text.clear();
    }

    void comment(const char *text)
    {
        flushText();
        takeNodes(1);
        takeCharacters(text);
        if (isGoingOn())
            take(m_handler.comment(decoded(text)));
    }

    void processingInstruction(const char *target, const char *data)
    {
        flushText();
        takeNodes(1);
        takeName(target);
        takeCharacters(data);
        if (isGoingOn())
            take(m_handler.processingInstruction(decoded(target), decoded(data)));
    }

    void flushText()
    {
        if (m_text.empty())
            return;
        takeCharacters(m_text.c_str());
        if (isGoingOn())
            take(m_handler.text(decoded(m_text)));
        m_text.clear();
    }

    void takeNodes(int count)
    {
        m_nodes += count;
        if (m_nodes > m_limits.nodes)
            stop(QStringLiteral("more than %1 elements and attributes").arg(m_limits.nodes));
    }

    void takeName(const char *name)
    {
        if (std::strlen(name) > XmlStream::maximumNameBytes)
            stop(QStringLiteral("a name is longer than %1 bytes").arg(XmlStream::maximumNameBytes));
    }

    void takeCharacters(const char *text)
    {
        if (std::strchr(text, deleteCharacter))
            stop(QStringLiteral("it holds control characters"));
    }

    void takeAttributes(const char **attributes)
    {
        // Where a file of declarations could have declared it, Expat drops an unknown reference in a value.
        if (m_hasDocumentType && *attributes && hasUndeclaredReference())
            stop(undeclared());
        for (const char **text = attributes; *text; text += 2) {
            takeName(text[0]);
            takeCharacters(text[1]);
        }
    }

    bool hasUndeclaredReference() const
    {
        const auto start = static_cast<int>(XML_GetCurrentByteIndex(m_parser.get()));
        const QByteArray tag = m_xml.mid(start, XML_GetCurrentByteCount(m_parser.get()));
        for (auto at = tag.indexOf('&'); at >= 0; at = tag.indexOf('&', at + 1)) {
            if (isDeclaredNowhere(tag.mid(at, 6)))
                return true;
        }
        return false;
    }

    QVector<Attribute> decodedAttributes(const char **attributes)
    {
        QVector<Attribute> result;
        result.reserve(2);
        for (; *attributes; attributes += 2)
            result.append({m_texts.of(attributes[0]), m_texts.of(attributes[1])});
        return result;
    }

    static QString undeclared() { return QStringLiteral("a reference to an entity that nothing declares"); }

    /// Expat may call once more after it was stopped.
    bool isGoingOn() const { return bool(m_result); }

    void take(const Result<> &taken)
    {
        if (!taken)
            stop(taken.problem().text);
    }

    void stop(const QString &problem)
    {
        if (!isGoingOn())
            return;
        m_result = located(problem);
        XML_StopParser(m_parser.get(), XML_FALSE);
    }

    Problem located(const QString &problem) const
    {
        return {{}, QStringLiteral("%1: %2").arg(place().text(), problem)};
    }

    TextPlace place() const override
    {
        return {static_cast<int>(XML_GetCurrentLineNumber(m_parser.get())),
                static_cast<int>(XML_GetCurrentColumnNumber(m_parser.get())) + 1};
    }

    const QByteArray &m_xml;
    XmlStream::Handler &m_handler;
    const XmlStream::Limits m_limits;
    const Parser m_parser;
    Result<> m_result;
    DecodedTexts m_texts;
    std::string m_text; ///< in UTF-8, since the last piece
    int m_depth = 0;
    int m_nodes = 0;
    bool m_hasDocumentType = false;
};

/// Is content with nothing behind the first name.
class RootFinder : public XmlStream::Handler
{
public:
    QString name;

    Result<> documentType(const QString &type) override { return startElement(type, {}); }

    Result<> startElement(const QString &element, const QVector<Attribute> &) override
    {
        name = element;
        return Problem{{}, QStringLiteral("that is enough")};
    }
};

} // namespace

Result<> XmlStream::read(const QByteArray &xml, Handler &handler, const Limits &limits)
{
    if (xml.size() > limits.bytes)
        return Problem{{}, QStringLiteral("it is larger than %1 MiB").arg(limits.bytes / (1024 * 1024))};
    if (XmlEncoding::hasHalfAPair(xml))
        return Problem{{}, QStringLiteral("it holds half of a surrogate pair")};
    return Reading(xml, handler, limits).result();
}

QString XmlStream::rootName(const QByteArray &beginning)
{
    RootFinder finder;
    static_cast<void>(read(beginning, finder));
    return finder.name;
}
