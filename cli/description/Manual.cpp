// SPDX-License-Identifier: Apache-2.0
#include "cli/description/Descriptions.h"

#include "cli/HelpText.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

constexpr int pageWidth = 120;
const QString noVerb = QStringLiteral("pct");

/// Where a part of the page begins, with the words that the part is about, and where it ends.
const QRegularExpression partStart(QStringLiteral("^<!-- made by manual-update: (pct.*) -->$"));
const QString partEnd = QStringLiteral("<!-- end of what manual-update makes -->");

/// Commands that a text quotes are code on the page.
QString asMarkdown(QString text)
{
    return text.replace(QRegularExpression(QStringLiteral("\"(pct [^\"]+)\"")), QStringLiteral("`\\1`"));
}

QString optionRow(const Option &option)
{
    QString names = QStringLiteral("`%1`").arg(option.longForm());
    if (!option.letter.isEmpty())
        names.prepend(QStringLiteral("`-%1`, ").arg(QString(option.letter)));
    return QStringLiteral("| %1 | %2 |").arg(names, asMarkdown(option.meaning) + option.remark);
}

QStringList optionTable(const QList<Option> &options)
{
    QStringList lines{QStringLiteral("| Option | Meaning |"), QStringLiteral("| --- | --- |")};
    for (const Option &option : options)
        lines << optionRow(option);
    return lines;
}

QStringList verbPart(const Verb &verb)
{
    QStringList lines{QStringLiteral("```"), synopsis(verb, QStringLiteral("pct ")), QStringLiteral("```"),
                      QString(), wrapped({}, asMarkdown(verb.description), pageWidth)};
    if (!verb.options.isEmpty())
        lines << QString() << optionTable(verb.options);
    return lines;
}

/// The page while it is made anew, line by line.
class Page
{
public:
    explicit Page(const VerbTable &table);

    void read(const QString &line);
    Result<QString> made() const;

private:
    void begin(const QString &words);

    const VerbTable &m_table;
    QStringList m_lines;
    QStringList m_missing;
    QStringList m_unknown;
    bool m_inPart = false;
};

Page::Page(const VerbTable &table)
    : m_table(table)
    , m_missing(noVerb)
{
    for (const Verb &verb : table) {
        if (verb.run)
            m_missing << QStringLiteral("pct ") + verb.name;
    }
}

void Page::read(const QString &line)
{
    if (line == partEnd)
        m_inPart = false;
    if (!m_inPart)
        m_lines << line;
    const QRegularExpressionMatch start = partStart.match(line);
    if (start.hasMatch())
        begin(start.captured(1));
}

void Page::begin(const QString &words)
{
    m_inPart = true;
    if (m_missing.removeAll(words) == 0)
        m_unknown << words;
    else
        m_lines << QString()
                << (words == noVerb ? optionTable(generalOptions())
                                    : verbPart(*findVerb(m_table, words.mid(4))))
                << QString();
}

Result<QString> Page::made() const
{
    if (m_inPart)
        return Problem{{}, QStringLiteral("a part has no end")};
    if (!m_unknown.isEmpty())
        return Problem{{},
                       QStringLiteral("a part is about \"%1\", which is no verb or has a part already")
                           .arg(m_unknown.first())};
    if (!m_missing.isEmpty())
        return Problem{{}, QStringLiteral("a part for \"%1\" is missing").arg(m_missing.first())};
    return m_lines.join(QLatin1Char('\n'));
}

} // namespace

Result<QString> manualPage(const VerbTable &table, const QString &page)
{
    Page anew(table);
    for (const QString &line : page.split(QLatin1Char('\n')))
        anew.read(line);
    return anew.made();
}
