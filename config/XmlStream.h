// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"
#include "core/TextPlace.h"

#include <QByteArray>
#include <QString>
#include <QVector>

/// XML as it streams by, from one parser whose time grows with the length of the input only. Every bound is
/// applied while reading, so what is refused costs no more than what was read up to there. Any thread.
///
/// All XML of the application comes by here, into trees as well as into property lists. A check in front of
/// another reader would guard what it has understood itself, not what the other one reads. Qt's own readers
/// compare each attribute of an element with all others, recurse without a limit, expand entities and accept
/// characters that nobody can read again.
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

/// Says where in the document a handler's piece begins, while the handler takes it.
class Locator
{
public:
    virtual ~Locator() = default;
    virtual TextPlace place() const = 0;
};

/// Takes a document piece by piece, in its order. Names are as written, with their prefix. A function that
/// fails says what is wrong with its piece, which ends the reading.
class Handler
{
public:
    virtual ~Handler() = default;

    /// Comes before all pieces; the locator lives as long as the reading.
    virtual void begin(const Locator & /*locator*/) {}

    /// The XML declaration, if there is one; the encoding is empty when it names none.
    virtual Result<> declaration(const QString & /*version*/, const QString & /*encoding*/,
                                 bool /*standalone*/)
    {
        return {};
    }

    /// A document type, which may refer to a file of declarations that is never read. One that holds
    /// declarations is refused in any case. Refuses every document type unless overridden.
    virtual Result<> documentType(const QString & /*name*/)
    {
        return Problem{{}, QStringLiteral("document type declarations are not accepted")};
    }

    virtual Result<> startElement(const QString & /*name*/, const QVector<Attribute> & /*attributes*/)
    {
        return {};
    }

    /// The element that has just begun is written as one tag. Its end follows.
    virtual Result<> emptyTag() { return {}; }

    virtual Result<> endElement() { return {}; }

    /// All text up to the next piece at once, line ends as line feeds, references resolved; never empty.
    virtual Result<> text(const QString & /*text*/) { return {}; }

    /// A CDATA section, which may be empty. Passes it on to text() unless overridden.
    virtual Result<> cdata(const QString &content) { return content.isEmpty() ? Result<>() : text(content); }

    virtual Result<> comment(const QString & /*text*/) { return {}; }
    virtual Result<> processingInstruction(const QString & /*target*/, const QString & /*data*/)
    {
        return {};
    }
};

/// That the bytes are well-formed XML within the limits, hold neither control characters nor declarations,
/// and the handler took all of it. Otherwise the problem says what is wrong, with line and column; the
/// handler has then seen everything before that place.
Result<> read(const QByteArray &xml, Handler &handler, const Limits &limits = {});

/// The name of the root element, or of the document type in front of it, from the first bytes of a document,
/// which may be cut behind it. Null when they do not tell.
QString rootName(const QByteArray &beginning);

} // namespace XmlStream
