// SPDX-License-Identifier: Apache-2.0
#include "profile/XmlPropertyList.h"

#include "config/XmlText.h"
#include "profile/PropertyListInput.h"

#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>

namespace {

/// Found before the XML reader works through what may be a hundred thousand declarations.
bool declaresEntities(const QByteArray &xml)
{
    const int start = xml.indexOf("<!DOCTYPE");
    const int end = xml.indexOf('>', start);
    return start >= 0 && xml.mid(start, end - start).contains('[');
}

class Rewriting
{
public:
    explicit Rewriting(const QByteArray &xml)
        : m_reader(xml)
        , m_writer(&m_result)
    {
        m_writer.writeStartDocument();
    }

    QByteArray run(QString &problem)
    {
        while (!m_reader.atEnd()) {
            problem = copy(m_reader.readNext());
            if (!problem.isEmpty())
                break;
        }
        if (m_reader.hasError())
            problem = m_reader.errorString();
        if (problem.isEmpty())
            return m_result;
        problem = QStringLiteral("line %1, column %2: %3")
                      .arg(QString::number(m_reader.lineNumber()), QString::number(m_reader.columnNumber()),
                           problem);
        return {};
    }

private:
    QString copy(QXmlStreamReader::TokenType token)
    {
        switch (token) {
        case QXmlStreamReader::StartDocument:
            return encodingProblem();
        case QXmlStreamReader::StartElement:
            return enterElement();
        case QXmlStreamReader::Characters:
            return copyText();
        case QXmlStreamReader::EndElement:
            --m_depth;
            m_writer.writeEndElement();
            return {};
        default:
            return {};
        }
    }

    QString encodingProblem() const
    {
        const auto encoding = m_reader.documentEncoding();
        const bool utf8 = encoding.isEmpty() ||
                          encoding.compare(QLatin1String("UTF-8"), Qt::CaseInsensitive) == 0 ||
                          encoding.compare(QLatin1String("US-ASCII"), Qt::CaseInsensitive) == 0;
        return utf8 ? QString() : QStringLiteral("its encoding is not UTF-8");
    }

    QString enterElement()
    {
        if (++m_depth > PropertyListInput::maximumDepth)
            return QStringLiteral("elements are nested deeper than %1").arg(PropertyListInput::maximumDepth);
        if (++m_nodes > PropertyListInput::maximumNodes)
            return QStringLiteral("more than %1 elements").arg(PropertyListInput::maximumNodes);
        m_writer.writeStartElement(m_reader.name().toString());
        return {};
    }

    QString copyText()
    {
        const auto text = m_reader.text();
        if (!std::all_of(text.begin(), text.end(), isXmlCharacter))
            return QStringLiteral("it holds control characters");
        m_writer.writeCharacters(text.toString());
        return {};
    }

    QXmlStreamReader m_reader;
    QByteArray m_result;
    QXmlStreamWriter m_writer;
    int m_depth = 0;
    int m_nodes = 0;
};

} // namespace

QByteArray XmlPropertyList::rewritten(const QByteArray &xml, QString &problem)
{
    if (declaresEntities(xml)) {
        problem = QStringLiteral("its document type declares entities or elements");
        return {};
    }
    return Rewriting(xml).run(problem);
}
