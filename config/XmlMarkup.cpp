// SPDX-License-Identifier: Apache-2.0
#include "config/XmlMarkup.h"

#include <QDomDocument>
#include <QMap>

namespace {

bool isText(const QDomNode &node)
{
    return node.isText(); // CDATA sections are texts, too
}

class Writing
{
public:
    explicit Writing(int indent)
        : m_indent(indent)
    {
    }

    QByteArray text() const { return m_text; }

    void write(const QDomNode &node, int depth)
    {
        if (node.isDocument())
            return writeChildren(node, depth);
        if (isText(node))
            return writeText(node);
        if (!isText(node.previousSibling()))
            indentTo(depth);
        writeOnLine(node, depth);
        if (!isText(node.nextSibling()))
            breakLine();
    }

private:
    void writeChildren(const QDomNode &node, int depth)
    {
        for (QDomNode child = node.firstChild(); !child.isNull(); child = child.nextSibling())
            write(child, depth);
    }

    void writeText(const QDomNode &node)
    {
        if (node.isCDATASection())
            m_text += "<![CDATA[" + node.nodeValue().toUtf8() + "]]>";
        else
            writeEscaped(node.nodeValue(), "<&>\r");
    }

    void writeOnLine(const QDomNode &node, int depth)
    {
        if (node.isElement())
            writeElement(node, depth);
        else if (node.isComment())
            m_text += "<!--" + node.nodeValue().toUtf8() + "-->";
        else if (node.isProcessingInstruction())
            m_text += "<?" + node.nodeName().toUtf8() + ' ' + node.nodeValue().toUtf8() + "?>";
    }

    void writeElement(const QDomNode &element, int depth)
    {
        const QByteArray name = element.nodeName().toUtf8();
        m_text += '<' + name;
        writeAttributes(element.attributes());
        if (!element.hasChildNodes()) {
            m_text += "/>";
            return;
        }
        m_text += '>';
        if (!isText(element.firstChild()))
            breakLine();
        writeChildren(element, depth + 1);
        if (!isText(element.lastChild()))
            indentTo(depth);
        m_text += "</" + name + '>';
    }

    void writeAttributes(const QDomNamedNodeMap &attributes)
    {
        QMap<QString, QString> sorted;
        for (int i = 0; i < attributes.size(); ++i)
            sorted.insert(attributes.item(i).nodeName(), attributes.item(i).nodeValue());
        for (auto it = sorted.cbegin(); it != sorted.cend(); ++it) {
            m_text += ' ' + it.key().toUtf8() + "=\"";
            writeEscaped(it.value(), "<&>\"\r\n\t");
            m_text += '"';
        }
    }

    /// `special` is what a reader would take for something else, white space in a value included.
    void writeEscaped(const QString &value, const QByteArray &special)
    {
        for (const char c : value.toUtf8()) {
            if (special.contains(c))
                writeSpecial(c);
            else
                m_text += c;
        }
    }

    void writeSpecial(char c)
    {
        if (c == '<')
            m_text += "&lt;";
        else if (c == '&')
            m_text += "&amp;";
        else if (c == '"')
            m_text += "&quot;";
        else if (c == '>')
            m_text += m_text.endsWith("]]") ? "&gt;" : ">";
        else
            m_text += "&#x" + QByteArray::number(int(c), 16) + ';';
    }

    void indentTo(int depth)
    {
        if (m_indent > 0)
            m_text += QByteArray(m_indent * depth, ' ');
    }

    void breakLine()
    {
        if (m_indent != XmlMarkup::onOneLine)
            m_text += '\n';
    }

    const int m_indent;
    QByteArray m_text;
};

} // namespace

QByteArray XmlMarkup::of(const QDomNode &node, int indent)
{
    if (node.isNull())
        return {};
    Writing writing(indent);
    writing.write(node, node.isDocument() ? 0 : 1);
    return writing.text();
}
