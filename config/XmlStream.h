// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

/// XML as it streams by, from one parser whose time grows with the length of the input only. Every bound is
/// applied while reading, so what is refused costs no more than what was read up to there. Any thread.
namespace XmlStream {

constexpr qint64 maximumBytes = 32 * 1024 * 1024;
constexpr int maximumDepth = 256;
/// Everything that a tree has to hold: elements, attributes, comments, CDATA sections and processing
/// instructions together. Texts need no count of their own, because they stand between these.
constexpr int maximumNodes = 200 * 1000;
constexpr int maximumAttributes = 256; ///< in one element
constexpr int maximumNameBytes = 1024; ///< of an element, an attribute or a processing instruction

struct Limits
{
    qint64 bytes = maximumBytes;
    int nodes = maximumNodes;
};

struct Attribute
{
    QString name;
    QString value; ///< normalised: literal line breaks and tabs are blanks
};

/// Takes a document piece by piece, in its order. Names are as written, with their prefix. Each function says
/// what is wrong with its piece, which ends the reading, or returns the null string.
class Handler
{
public:
    virtual ~Handler() = default;

    /// The XML declaration, if there is one; the encoding is empty when it names none.
    virtual QString declaration(const QString & /*version*/, const QString & /*encoding*/,
                                bool /*standalone*/)
    {
        return {};
    }

    /// A document type, which may refer to a file of declarations that is never read. One that holds
    /// declarations is refused in any case. Refuses every document type unless overridden.
    virtual QString documentType(const QString & /*name*/)
    {
        return QStringLiteral("document type declarations are not accepted");
    }

    virtual QString startElement(const QString & /*name*/, const QVector<Attribute> & /*attributes*/)
    {
        return {};
    }

    /// The element that has just begun is written as one tag. Its end follows.
    virtual QString emptyTag() { return {}; }

    virtual QString endElement() { return {}; }

    /// All text up to the next piece at once, line ends as line feeds, references resolved; never empty.
    virtual QString text(const QString & /*text*/) { return {}; }

    /// A CDATA section, which may be empty. Passes it on to text() unless overridden.
    virtual QString cdata(const QString &content) { return content.isEmpty() ? QString() : text(content); }

    virtual QString comment(const QString & /*text*/) { return {}; }
    virtual QString processingInstruction(const QString & /*target*/, const QString & /*data*/) { return {}; }
};

/// True when the bytes are well-formed XML within the limits, hold neither control characters nor
/// declarations, and the handler took all of it. Otherwise `error` (optional) says what is wrong, with line
/// and column; the handler has then seen everything before that place.
bool read(const QByteArray &xml, Handler &handler, QString *error = nullptr, const Limits &limits = {});

/// The name of the root element, or of the document type in front of it, from the first bytes of a document,
/// which may be cut behind it. Null when they do not tell.
QString rootName(const QByteArray &beginning);

} // namespace XmlStream
