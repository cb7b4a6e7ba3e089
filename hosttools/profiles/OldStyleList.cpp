// SPDX-License-Identifier: Apache-2.0
#include "hosttools/profiles/OldStyleList.h"

#include "hosttools/base/Error.h"

#include <QHash>
#include <QRegularExpression>

using namespace FlatPkg;

namespace {

QRegularExpression form(const QByteArray &pattern)
{
    static QHash<QByteArray, QRegularExpression> known;
    if (!known.contains(pattern))
        known.insert(pattern, QRegularExpression(QString::fromLatin1(pattern),
                                                 QRegularExpression::DotMatchesEverythingOption));
    return known[pattern];
}

/// What begins at the place and has that form.
QRegularExpressionMatch matchAt(const QByteArray &pattern, const QString &text, int at)
{
    // Each check would go over all of the text.
    return form("\\G(?:" + pattern + ')')
        .match(text, at, QRegularExpression::NormalMatch,
               QRegularExpression::DontCheckSubjectStringMatchOption);
}

/// What an escape in a text stands for.
QString meaning(const QString &escape)
{
    const QString known = QStringLiteral("a\ab\bf\fn\nr\rt\tv\v");
    bool isNumber = false;
    const int octal = escape.toInt(&isNumber, 8);
    if (isNumber && octal > 0177)
        throw Error("is a property list with an octal escape beyond ASCII, which is not understood here");
    if (isNumber)
        return QChar(octal);
    if (escape.startsWith(QLatin1Char('U')))
        return QChar(escape.mid(1).toUShort(nullptr, 16));
    const auto at = known.indexOf(escape);
    return at >= 0 && at % 2 == 0 ? known.mid(at + 1, 1) : escape;
}

QString withoutEscapes(const QString &text)
{
    const QRegularExpression escape = form("\\\\([0-7]{1,3}|U[0-9A-Fa-f]{0,4}|.)");
    QString result;
    decltype(text.size()) end = 0;
    for (auto found = escape.globalMatch(text); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        result += text.mid(end, match.capturedStart() - end) + meaning(match.captured(1));
        end = match.capturedEnd();
    }
    return result + text.mid(end);
}

class Translating
{
public:
    Translating(const QString &text, int mostLevels)
        : m_text(text)
        , m_mostLevels(mostLevels)
    {
    }

    QByteArray run()
    {
        QString first;
        const bool isContainer = startsWith("[{(<]");
        if (isContainer || (takesText(&first) && startsWith("\\z")))
            return finished(isContainer ? value(m_mostLevels) : element("string", first));
        m_at = 0;
        return finished("<dict>" + entries(m_mostLevels) + "</dict>");
    }

private:
    QByteArray finished(const QByteArray &xml)
    {
        return takes("\\z") ? "<plist version=\"1.0\">" + xml + "</plist>" : refused();
    }

    QByteArray value(int levels)
    {
        if (levels == 0)
            throw Error("is nested more than " + QByteArray::number(m_mostLevels) + " levels deep");
        QString text;
        if (takes("\\{"))
            return "<dict>" + closed(entries(levels), "\\}") + "</dict>";
        if (takes("\\("))
            return "<array>" + closed(items(levels), "\\)") + "</array>";
        if (takes("<((?:[0-9A-Fa-f]{2}|[ \\n\\t\\r\\x{2028}\\x{2029}])*+)>", &text))
            return "<data>" + QByteArray::fromHex(text.toLatin1()).toBase64() + "</data>";
        return takesText(&text) ? element("string", text) : refused();
    }

    QByteArray entries(int levels)
    {
        QByteArray xml;
        for (QString key; takesText(&key);) {
            const QByteArray found = takes("=") ? value(levels - 1) : element("string", key);
            xml += element("key", key) + closed(found, ";");
        }
        return xml;
    }

    QByteArray items(int levels)
    {
        QByteArray xml;
        while (!startsWith("\\)")) {
            xml += value(levels - 1);
            if (!takes(","))
                break;
        }
        return xml;
    }

    QByteArray closed(const QByteArray &xml, const char *end) { return takes(end) ? xml : refused(); }

    static QByteArray element(const QByteArray &name, const QString &text)
    {
        return '<' + name + '>' + text.toHtmlEscaped().toUtf8() + "</" + name + '>';
    }

    bool takesText(QString *text)
    {
        if (takes("([A-Za-z0-9_$/:.-]++)", text))
            return true;
        if (!takes("\"((?:[^\"\\\\]++|\\\\.)*+)\"", text) && !takes("'((?:[^'\\\\]++|\\\\.)*+)'", text))
            return false;
        *text = withoutEscapes(*text);
        return true;
    }

    bool startsWith(const char *pattern)
    {
        const int before = m_at;
        const bool does = takes(pattern);
        m_at = before;
        return does;
    }

    /// Goes behind what has that form, if it comes next; the text gets what stands in the parentheses.
    bool takes(const char *pattern, QString *text = nullptr)
    {
        static const QByteArray space(
            "(?:[ \\t-\\r\\x{2028}\\x{2029}]|//[^\\n\\r\\x{2028}\\x{2029}]*+|/\\*.*?(?:\\*/|\\z))*+");
        m_at = static_cast<int>(matchAt(space, m_text, m_at).capturedEnd());
        const QRegularExpressionMatch match = matchAt(pattern, m_text, m_at);
        if (!match.hasMatch())
            return false;
        m_at = static_cast<int>(match.capturedEnd());
        if (text)
            *text = match.captured(1);
        return true;
    }

    QByteArray refused() const
    {
        throw Error("is not a property list: line " +
                    QByteArray::number(m_text.left(m_at).count(QLatin1Char('\n')) + 1) +
                    ": something is missing or too much");
    }

    const QString m_text;
    const int m_mostLevels;
    int m_at = 0;
};

} // namespace

bool OldStyleList::isOne(const QByteArray &bytes)
{
    const QByteArray start = bytes.left(4096).trimmed();
    return !start.isEmpty() && !start.startsWith('<') && start.at(0) >= ' ' && uchar(start.at(0)) < 0x80;
}

QByteArray OldStyleList::asXml(const QByteArray &bytes, int mostLevels)
{
    const QString text = QString::fromUtf8(bytes);
    if (text.toUtf8() != bytes)
        throw Error("is not a property list: it is no text");
    return Translating(text, mostLevels).run();
}
