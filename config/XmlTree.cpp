// SPDX-License-Identifier: Apache-2.0
#include "config/XmlTree.h"

#include <algorithm>

namespace {

bool isWhiteSpace(const QString &text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) {
        return c == QLatin1Char(' ') || c == QLatin1Char('\n') || c == QLatin1Char('\t') ||
               c == QLatin1Char('\r');
    });
}

QString declarationText(const QString &version, const QString &encoding, bool standalone)
{
    QString text = QStringLiteral("version='%1'").arg(version);
    if (!encoding.isEmpty())
        text += QStringLiteral(" encoding='%1'").arg(encoding);
    if (standalone)
        text += QStringLiteral(" standalone='yes'");
    return text;
}

/// What Qt's nodes are handles of; equal nodes are handles of one.
class NodeHandle : public QDomNode
{
public:
    explicit NodeHandle(const QDomNode &node)
        : QDomNode(node)
    {
    }

    const void *node() const { return impl; }
};

class TreeBuilder : public XmlStream::Handler
{
public:
    explicit TreeBuilder(XmlPlaces *places)
        : m_places(places)
    {
    }

    QDomDocument document() const { return m_document; }

    void begin(const XmlStream::Locator &locator) override { m_locator = &locator; }

    Result<> declaration(const QString &version, const QString &encoding, bool standalone) override
    {
        return processingInstruction(QStringLiteral("xml"), declarationText(version, encoding, standalone));
    }

    Result<> startElement(const QString &name, const QVector<XmlStream::Attribute> &attributes) override
    {
        QDomElement element = m_document.createElement(name);
        for (const XmlStream::Attribute &attribute : attributes)
            element.setAttribute(attribute.name, attribute.value);
        m_parent = m_parent.appendChild(element);
        if (m_places)
            m_places->add(element, m_locator->place());
        return {};
    }

    Result<> endElement() override
    {
        m_parent = m_parent.parentNode();
        return {};
    }

    Result<> text(const QString &text) override
    {
        return isWhiteSpace(text) ? Result<>() : append(m_document.createTextNode(text));
    }

    Result<> cdata(const QString &text) override { return append(m_document.createCDATASection(text)); }

    Result<> comment(const QString &text) override { return append(m_document.createComment(text)); }

    Result<> processingInstruction(const QString &target, const QString &data) override
    {
        return append(m_document.createProcessingInstruction(target, data));
    }

private:
    Result<> append(const QDomNode &node)
    {
        m_parent.appendChild(node);
        return {};
    }

    QDomDocument m_document{QString()}; // one without even an empty name is null and takes no children
    QDomNode m_parent = m_document;
    XmlPlaces *m_places;
    const XmlStream::Locator *m_locator = nullptr;
};

Result<QDomDocument> build(const QByteArray &xml, const XmlStream::Limits &limits, XmlPlaces *places)
{
    TreeBuilder builder(places);
    if (const Result<> isRead = XmlStream::read(xml, builder, limits); !isRead)
        return isRead.problem();
    return builder.document();
}

void collectFirst(const QDomElement &parent, const QStringList &tagNames, QVector<QDomElement> &found)
{
    for (QDomElement child = parent.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        const auto index = tagNames.indexOf(child.tagName());
        if (index >= 0 && found.at(index).isNull())
            found[index] = child;
        collectFirst(child, tagNames, found);
    }
}

} // namespace

void XmlPlaces::add(const QDomElement &element, const TextPlace &place)
{
    m_places.insert(NodeHandle(element).node(), place);
}

TextPlace XmlPlaces::of(const QDomElement &element) const
{
    return m_places.value(NodeHandle(element).node());
}

Result<QDomDocument> XmlTree::read(const QByteArray &xml, const XmlStream::Limits &limits)
{
    return build(xml, limits, nullptr);
}

Result<QDomDocument> XmlTree::read(const QByteArray &xml, XmlPlaces &places, const XmlStream::Limits &limits)
{
    return build(xml, limits, &places);
}

QVector<QDomElement> XmlTree::firstNamed(const QDomElement &root, const QStringList &tagNames)
{
    QVector<QDomElement> found(tagNames.size());
    collectFirst(root, tagNames, found);
    return found;
}
