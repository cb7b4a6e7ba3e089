// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QVector>

#include <memory>

namespace FlatPkg {

/// What a document may hold at most; the limits apply while it is read.
struct XmlLimits
{
    int elements = 200000;
    int levels = 256;
    int attributes = 256;  ///< of one element
    int nameLength = 1024; ///< in bytes
};

/// Reads an XML document element by element, forwards only, in a time that grows with its length and with
/// nothing else. All text is UTF-8; names come without a prefix. Every function that moves on throws Error
/// for a document that is not well-formed, exceeds the limits or has a document type definition.
class XmlReader
{
public:
    /// `subject` stands in front of what is wrong, such as "the table ". The document must outlive the
    /// reader.
    explicit XmlReader(const QByteArray &document, const QByteArray &subject = QByteArray(),
                       const XmlLimits &limits = XmlLimits());
    ~XmlReader();

    /// Moves to the next element within the current one (first to the root), or behind the end of the current
    /// one, which gives false.
    bool readNextStartElement();
    /// Moves behind the end of the current element.
    void skipCurrentElement();
    /// Moves to the end of the document, to see that all of it is well-formed.
    void readToEnd();

    /// The text of the current element up to its end. Elements in it are refused.
    QByteArray readText();
    /// The same, with the text of the elements in it.
    QByteArray readAllText();

    const QByteArray &name() const;
    bool at(const char *element) const { return name() == element; }
    /// An attribute of the current element, empty when it is not there.
    QByteArray attribute(const char *name) const;
    /// The encoding that the document declares, empty when it declares none.
    QByteArray encoding() const;

private:
    class Parser;
    std::unique_ptr<Parser> m_parser;
};

} // namespace FlatPkg
