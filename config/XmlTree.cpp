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

class TreeBuilder : public XmlStream::Handler
{
public:
    QDomDocument document() const { return m_document; }

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
};

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

Result<QDomDocument> XmlTree::read(const QByteArray &xml, const XmlStream::Limits &limits)
{
    TreeBuilder builder;
    if (const Result<> isRead = XmlStream::read(xml, builder, limits); !isRead)
        return isRead.problem();
    return builder.document();
}

QVector<QDomElement> XmlTree::firstNamed(const QDomElement &root, const QStringList &tagNames)
{
    QVector<QDomElement> found(tagNames.size());
    collectFirst(root, tagNames, found);
    return found;
}
