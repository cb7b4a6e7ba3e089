// SPDX-License-Identifier: Apache-2.0
#include "tests/support/TestFiles.h"
#include "tests/welcome/webview/PageCases.h"

#include <QtTest>

/// What decides for every view about loading, navigation and new windows.
class tst_PageRules : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyCaseIsDecided_data();
    void everyCaseIsDecided();
    void onlyAPageInAFileOpensAFolder_data();
    void onlyAPageInAFileOpensAFolder();
    void aLaterPageChangesTheFolder();
    void aHelpFolderBehindALinkIsSeen();
    void openingsAreFew();

private:
    QUrl page(const char *name) const { return QUrl::fromLocalFile(m_folder.filePath(QLatin1String(name))); }

    QTemporaryDir m_folder;
};

void tst_PageRules::initTestCase()
{
    makePageFiles(m_folder);
}

void tst_PageRules::everyCaseIsDecided_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < pageCases().size(); ++i)
        QTest::newRow(pageCases().at(i).name) << i;
}

void tst_PageRules::everyCaseIsDecided()
{
    QFETCH(int, index);
    const PageCase &expected = pageCases().at(index);
    PageRules rules;
    rules.setPage(page("en-US/Page.html"));
    const QUrl address = page("en-US/Page.html").resolved(QUrl::fromEncoded(expected.address));
    QCOMPARE(rules.allowsLoading(address), expected.loads);
    QCOMPARE(rules.toNavigation(address, true, true), expected.clicked);
    QCOMPARE(rules.toNavigation(address, false, true), expected.otherwise);
    QCOMPARE(rules.toNavigation(address, true, false), expected.otherwise);
    QCOMPARE(rules.toNewWindow(address, true), expected.newWindow);
    QCOMPARE(rules.toNewWindow(address, false), PageRules::Answer::Refuse);
}

void tst_PageRules::onlyAPageInAFileOpensAFolder_data()
{
    QTest::addColumn<QUrl>("first");
    QTest::newRow("none yet") << QUrl();
    QTest::newRow("web") << QUrl(QStringLiteral("https://example.invalid/"));
    QTest::newRow("content") << QUrl(QStringLiteral("data:text/html,text"));
}

void tst_PageRules::onlyAPageInAFileOpensAFolder()
{
    QFETCH(QUrl, first);
    PageRules rules;
    rules.setPage(first);
    QVERIFY(!rules.allowsLoading(page("en-US/Other.html")));
    QVERIFY(!rules.allowsLoading(QUrl(QStringLiteral("https://example.invalid/"))));
}

void tst_PageRules::aLaterPageChangesTheFolder()
{
    PageRules rules;
    rules.setPage(page("en-US/Other.html"));
    rules.setPage(page("en-US-other/Outside.html"));
    QVERIFY(rules.allowsLoading(page("en-US-other/Outside.html")));
    QVERIFY(!rules.allowsLoading(page("en-US/Other.html")));
}

void tst_PageRules::aHelpFolderBehindALinkIsSeen()
{
    QVERIFY(QFile::link(m_folder.filePath(QStringLiteral("en-US")), m_folder.filePath(QStringLiteral("de"))));
    PageRules rules;
    rules.setPage(page("de/Other.html"));
    QVERIFY(rules.allowsLoading(page("de/sub/Page.html")));
    QVERIFY(!rules.allowsLoading(page("de/Link.html")));
}

void tst_PageRules::openingsAreFew()
{
    PageRules rules;
    int admitted = 0;
    for (int i = 0; i < 100; ++i)
        admitted += rules.admitsOpening() ? 1 : 0;
    QVERIFY2(admitted >= 3 && admitted <= 6, qPrintable(QString::number(admitted)));
}

QTEST_GUILESS_MAIN(tst_PageRules)
#include "tst_PageRules.moc"
