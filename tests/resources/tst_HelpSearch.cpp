// SPDX-License-Identifier: Apache-2.0
#include "tests/resources/GuidePages.h"
#include "tests/welcome/webview/HelpPages.h"

#include <QtTest>

namespace {

QString search()
{
    return QUrl::fromLocalFile(GuidePages::path(QStringLiteral("Search.html"))).toString(QUrl::FullyEncoded);
}

/// A link of the results, decoded.
QString decoded(const QString &href)
{
    return QUrl::fromPercentEncoding(href.toUtf8());
}

} // namespace

/// The search over the guide, in the engine that shows it, from a file and without a network.
class tst_HelpSearch : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void itsHeadingFindsEverySection_data();
    void itsHeadingFindsEverySection();
    void allWordsHaveToOccur();
    void lettersMayBeLargeOrSmall();
    void whatIsNowhereIsSaidSo();
    void nothingIsTakenForMarkup();
    void noWordFindsNothing();

private:
    QStringList linksFor(const QString &words);

    HelpPages m_pages;
};

void tst_HelpSearch::initTestCase()
{
    m_pages.view->loadRequest(search());
    QTRY_COMPARE(m_pages.in(QStringLiteral("!!window.guideIndex && document.readyState")),
                 QStringLiteral("complete"));
}

/// Types the words and gives where the results lead.
QStringList tst_HelpSearch::linksFor(const QString &words)
{
    const QString script = QStringLiteral("(function () { var field = document.getElementById('query');"
                                          "field.value = decodeURIComponent('%1'); field.oninput();"
                                          "return [].map.call(document.querySelectorAll('#results a'), "
                                          "function (a) { return a.getAttribute('href'); }).join('|'); }())");
    return m_pages.in(script.arg(QString::fromLatin1(QUrl::toPercentEncoding(words))))
        .split(QLatin1Char('|'), Qt::SkipEmptyParts);
}

void tst_HelpSearch::itsHeadingFindsEverySection_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("address");
    for (const GuidePage &page : GuidePages::all()) {
        for (const QDomElement &section : GuidePages::elements(page, QStringLiteral("section"))) {
            const QString id = section.attribute(QStringLiteral("id"));
            if (page.name != QLatin1String("Search.html"))
                QTest::addRow("%s#%s", qUtf8Printable(page.name), qUtf8Printable(id))
                    << section.firstChild().toElement().text().simplified()
                    << page.name + QLatin1Char('#') + id;
        }
    }
}

void tst_HelpSearch::itsHeadingFindsEverySection()
{
    QFETCH(QString, words);
    QFETCH(QString, address);
    QVERIFY(!words.isEmpty());
    QStringList found;
    for (const QString &link : linksFor(words))
        found.append(decoded(link));
    QVERIFY2(found.contains(address),
             qUtf8Printable(words + QStringLiteral(": ") + found.join(QLatin1Char(' '))));
}

void tst_HelpSearch::allWordsHaveToOccur()
{
    QVERIFY(!linksFor(QStringLiteral("viewer")).isEmpty());
    QVERIFY(linksFor(QStringLiteral("viewer zeppelin")).isEmpty());
}

void tst_HelpSearch::lettersMayBeLargeOrSmall()
{
    const QStringList links = linksFor(QStringLiteral("DEFAULT viewer"));
    QVERIFY(!links.isEmpty());
    QCOMPARE(linksFor(QStringLiteral("default Viewer")), links);
}

void tst_HelpSearch::whatIsNowhereIsSaidSo()
{
    QVERIFY(linksFor(QStringLiteral("zeppelin")).isEmpty());
    QCOMPARE(m_pages.in(QStringLiteral("document.getElementById('count').textContent")),
             QStringLiteral("0 sections."));
}

void tst_HelpSearch::nothingIsTakenForMarkup()
{
    QVERIFY(!linksFor(QStringLiteral("<Preference")).isEmpty());
    QCOMPARE(m_pages.in(QStringLiteral("document.querySelectorAll('#results preference').length")),
             QStringLiteral("0"));
}

void tst_HelpSearch::noWordFindsNothing()
{
    QVERIFY(linksFor(QStringLiteral("  ")).isEmpty());
    QCOMPARE(m_pages.in(QStringLiteral("document.getElementById('count').textContent")),
             QStringLiteral("Type a word."));
}

QTEST_MAIN(tst_HelpSearch)
#include "tst_HelpSearch.moc"
