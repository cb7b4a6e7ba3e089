// SPDX-License-Identifier: Apache-2.0
#include "config/XmlGuard.h"

#include <QXmlStreamReader>

#include <algorithm>

namespace {

bool isForbidden(QChar c)
{
    if (c.unicode() < 0x20)
        return c != QLatin1Char('\t') && c != QLatin1Char('\n') && c != QLatin1Char('\r');
    return c.unicode() == 0x7f || c.unicode() == 0xfffe || c.unicode() == 0xffff;
}

template <typename Text> bool hasForbidden(const Text &text)
{
    return std::any_of(text.begin(), text.end(), isForbidden);
}

/// Counts what a document tree would have to hold while the document streams by.
class Inspection
{
public:
    explicit Inspection(const QByteArray &xml)
        : m_reader(xml)
    {
    }

    QString firstProblem()
    {
        while (!m_reader.atEnd()) {
            const QString problem = problemOf(m_reader.readNext());
            if (!problem.isEmpty())
                return located(problem);
        }
        return m_reader.hasError() ? located(m_reader.errorString()) : QString();
    }

private:
    QString problemOf(QXmlStreamReader::TokenType token)
    {
        switch (token) {
        case QXmlStreamReader::DTD:
            return QStringLiteral("document type declarations are not accepted");
        case QXmlStreamReader::StartElement:
            return enterElement();
        case QXmlStreamReader::EndElement:
            --m_depth;
            return {};
        case QXmlStreamReader::Characters:
        case QXmlStreamReader::Comment:
        case QXmlStreamReader::ProcessingInstruction:
            return hasForbidden(m_reader.text()) || hasForbidden(m_reader.processingInstructionData())
                       ? controlCharacters()
                       : QString();
        default:
            return {};
        }
    }

    QString enterElement()
    {
        if (++m_depth > XmlGuard::maximumDepth)
            return QStringLiteral("elements are nested deeper than %1").arg(XmlGuard::maximumDepth);
        const QXmlStreamAttributes attributes = m_reader.attributes();
        m_nodes += 1 + attributes.size();
        if (m_nodes > XmlGuard::maximumNodes)
            return QStringLiteral("more than %1 elements and attributes").arg(XmlGuard::maximumNodes);
        const bool dirty = std::any_of(attributes.begin(), attributes.end(),
                                       [](const auto &attribute) { return hasForbidden(attribute.value()); });
        return dirty ? controlCharacters() : QString();
    }

    static QString controlCharacters() { return QStringLiteral("it holds control characters"); }

    QString located(const QString &problem) const
    {
        return QStringLiteral("line %1, column %2: %3")
            .arg(QString::number(m_reader.lineNumber()), QString::number(m_reader.columnNumber()), problem);
    }

    QXmlStreamReader m_reader;
    int m_depth = 0;
    int m_nodes = 0;
};

} // namespace

bool XmlGuard::accepts(const QByteArray &xml, QString *error)
{
    QString problem;
    if (xml.size() > maximumBytes)
        problem = QStringLiteral("it is larger than %1 MiB").arg(maximumBytes / (1024 * 1024));
    else
        problem = Inspection(xml).firstProblem();
    if (error)
        *error = problem;
    return problem.isEmpty();
}
