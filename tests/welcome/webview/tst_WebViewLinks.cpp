// SPDX-License-Identifier: Apache-2.0
#include "tests/package/LogCapture.h"
#include "tests/support/TestFiles.h"
#include "tests/welcome/webview/HelpPages.h"
#include "tests/welcome/webview/PageCases.h"

#include <QMimeData>
#include <QtTest>

/// Where the links of a page lead.
class tst_WebViewLinks : public QObject
{
    Q_OBJECT

private slots:
    void mailOpensTheMailApplicationAndThePageStays();
    void aLinkForANewWindowOpensTheBrowserAndTheViewStays();
    void aLinkIntoTheWebOpensTheBrowserAndTheViewStays_data();
    void aLinkIntoTheWebOpensTheBrowserAndTheViewStays();
    void aLinkToAnotherPageLoadsIt();
    void aLinkToAMissingPageSaysSo();
    void aClickedLinkLeadsWhereTheRulesSay_data();
    void aClickedLinkLeadsWhereTheRulesSay();
    void aClickedLinkForANewWindowLeadsWhereTheRulesSay_data();
    void aClickedLinkForANewWindowLeadsWhereTheRulesSay();
    void aScriptOpensNothing_data();
    void aScriptOpensNothing();
    void aScriptThatClicksOpensNothing();
    void aScriptThatWaitsForAClickOpensNothing();
    void aDroppedFileIsNotLoaded();
    void aDownloadLeavesNothing();
};

void tst_WebViewLinks::mailOpensTheMailApplicationAndThePageStays()
{
    RecordingHandler handler;
    HelpPages pages(&handler);
    pages.open("<a id='a' href='mailto:help@example.invalid?subject=a%20b'>mail</a>");
    const LogCapture log;
    pages.click(QStringLiteral("a"));
    QTRY_COMPARE(pages.opened, QStringList(QStringLiteral("mailto:help@example.invalid?subject=a%20b")));
    QTest::qWait(200);
    QCOMPARE(pages.in(QStringLiteral("location.href")), pages.address(QStringLiteral("Page.html")));
    QCOMPARE(handler.codes, QList<int>{0});
    QVERIFY(!pages.saysNotAvailable());
    QCOMPARE(log.lines().filter(QStringLiteral("main frame url")), QStringList());
}

void tst_WebViewLinks::aLinkForANewWindowOpensTheBrowserAndTheViewStays()
{
    RecordingHandler handler;
    HelpPages pages(&handler);
    pages.open("<a id='a' target='_blank' href='https://example.invalid/a?b#c'>new</a>");
    const LogCapture log;
    const int windows = QApplication::topLevelWidgets().size();
    pages.click(QStringLiteral("a"));
    QTRY_COMPARE(pages.opened, QStringList(QStringLiteral("https://example.invalid/a?b#c")));
    QTest::qWait(200);
    QVERIFY(log.has(QStringLiteral("webView:(WebView *)sender decidePolicyForNewWindowAction {}")));
    QCOMPARE(pages.in(QStringLiteral("location.href")), pages.address(QStringLiteral("Page.html")));
    QCOMPARE(QApplication::topLevelWidgets().size(), windows);
    QCOMPARE(handler.codes, QList<int>{0});
}

void tst_WebViewLinks::aLinkIntoTheWebOpensTheBrowserAndTheViewStays_data()
{
    QTest::addColumn<QString>("url");
    QTest::newRow("http") << QStringLiteral("http://example.invalid/");
    QTest::newRow("https") << QStringLiteral("https://example.invalid/a%20b");
}

void tst_WebViewLinks::aLinkIntoTheWebOpensTheBrowserAndTheViewStays()
{
    QFETCH(QString, url);
    RecordingHandler handler;
    HelpPages pages(&handler);
    pages.open("<a id='a' href='" + url.toUtf8() + "'>web</a>");
    const QSignalSpy signal(pages.view.get(), &WebViewInQt::SignalAcceptNatigationRequest);
    pages.click(QStringLiteral("a"));
    QTRY_COMPARE(pages.opened, QStringList(url));
    QTest::qWait(200);
    QCOMPARE(pages.in(QStringLiteral("location.href")), pages.address(QStringLiteral("Page.html")));
    QCOMPARE(signal.size(), 1);
    QCOMPARE(handler.codes, QList<int>{0});
    QVERIFY(!pages.saysNotAvailable());
}

void tst_WebViewLinks::aLinkToAnotherPageLoadsIt()
{
    HelpPages pages;
    const QString other = pages.add(QStringLiteral("Other page.html"), "other");
    pages.open("<a id='a' href='Other%20page.html'>other</a>");
    pages.click(QStringLiteral("a"));
    QTRY_COMPARE(pages.in(QStringLiteral("location.href")), other);
    QVERIFY(pages.opened.isEmpty());
}

void tst_WebViewLinks::aLinkToAMissingPageSaysSo()
{
    HelpPages pages;
    pages.open("<a id='a' href='Missing.html'>missing</a>");
    pages.click(QStringLiteral("a"));
    QTRY_VERIFY(pages.saysNotAvailable());
}

void tst_WebViewLinks::aClickedLinkLeadsWhereTheRulesSay_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < pageCases().size(); ++i)
        QTest::newRow(pageCases().at(i).name) << i;
}

void tst_WebViewLinks::aClickedLinkLeadsWhereTheRulesSay()
{
    QFETCH(int, index);
    const PageCase &expected = pageCases().at(index);
    HelpPages pages;
    makePageFiles(pages.folder);
    pages.open("<a id='a' href='" + QByteArray(expected.address) + "'>link</a>");
    pages.click(QStringLiteral("a"));
    const QString here = pages.address(QStringLiteral("Page.html"));
    if (expected.loads && expected.isFile())
        QTRY_VERIFY(pages.in(QStringLiteral("location.href")) != here);
    if (expected.clicked == PageCase::Answer::OpenOutside)
        QTRY_COMPARE(pages.opened.size(), 1);
    QTest::qWait(300);
    if (!expected.loads)
        QCOMPARE(pages.in(QStringLiteral("location.href")), here);
    QCOMPARE(pages.opened.size(), expected.clicked == PageCase::Answer::OpenOutside ? 1 : 0);
}

void tst_WebViewLinks::aClickedLinkForANewWindowLeadsWhereTheRulesSay_data()
{
    aClickedLinkLeadsWhereTheRulesSay_data();
}

void tst_WebViewLinks::aClickedLinkForANewWindowLeadsWhereTheRulesSay()
{
    QFETCH(int, index);
    const PageCase &expected = pageCases().at(index);
    HelpPages pages;
    makePageFiles(pages.folder);
    pages.open("<a id='a' target='_blank' href='" + QByteArray(expected.address) + "'>link</a>");
    pages.click(QStringLiteral("a"));
    const int openings = expected.newWindow == PageCase::Answer::OpenOutside ? 1 : 0;
    if (openings > 0)
        QTRY_COMPARE(pages.opened.size(), openings);
    QTest::qWait(300);
    QCOMPARE(pages.opened.size(), openings);
    QCOMPARE(pages.in(QStringLiteral("location.href")), pages.address(QStringLiteral("Page.html")));
}

void tst_WebViewLinks::aScriptOpensNothing_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::newRow("window") << QByteArray("open('https://example.invalid/')");
    QTest::newRow("mail") << QByteArray("location = 'mailto:help@example.invalid'");
    QTest::newRow("web") << QByteArray("location = 'https://example.invalid/'");
    QTest::newRow("dialog") << QByteArray("showModalDialog('https://example.invalid/')");
}

void tst_WebViewLinks::aScriptOpensNothing()
{
    QFETCH(QByteArray, script);
    HelpPages pages;
    pages.open("<script>setTimeout(() => { " + script + " }, 50)</script>");
    QTest::qWait(500);
    QVERIFY2(pages.opened.isEmpty(), qPrintable(pages.opened.join(QLatin1Char(' '))));
    QCOMPARE(pages.in(QStringLiteral("location.href")), pages.address(QStringLiteral("Page.html")));
    QVERIFY(!pages.saysNotAvailable());
}

void tst_WebViewLinks::aScriptThatClicksOpensNothing()
{
    HelpPages pages;
    pages.open("<a id='a' href='https://example.invalid/'>web</a>"
               "<script>for (i = 0; i < 200; ++i) setTimeout(() => a.click(), 1)</script>");
    QTest::qWait(1000);
    QCOMPARE(pages.opened, QStringList());
}

void tst_WebViewLinks::aScriptThatWaitsForAClickOpensNothing()
{
    HelpPages pages;
    pages.open("<button id='a' onclick=\"clicked = true; open('https://example.invalid/')\">web</button>");
    pages.click(QStringLiteral("a"));
    QTRY_COMPARE(pages.in(QStringLiteral("window.clicked")), QStringLiteral("true"));
    QTest::qWait(300);
    QCOMPARE(pages.opened, QStringList());
}

void tst_WebViewLinks::aDroppedFileIsNotLoaded()
{
    HelpPages pages;
    QMimeData files;
    files.setUrls({QUrl(pages.add(QStringLiteral("Other.html"), "other"))});
    pages.open("");
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QDropEvent drop(QPoint(50, 50), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(pages.surface(), &enter);
    QApplication::sendEvent(pages.surface(), &drop);
    QVERIFY(!enter.isAccepted() && !drop.isAccepted());
    QTest::qWait(300);
    QCOMPARE(pages.in(QStringLiteral("location.href")), pages.address(QStringLiteral("Page.html")));
}

void tst_WebViewLinks::aDownloadLeavesNothing()
{
    HelpPages pages;
    const QDir downloads(QStandardPaths::writableLocation(QStandardPaths::DownloadLocation));
    const QStringList before = downloads.entryList();
    TestFiles::write(pages.path(QStringLiteral("Other.zip")), "PK");
    pages.open("<a id='a' href='Other.zip'>save</a>");
    pages.click(QStringLiteral("a"));
    QTest::qWait(500);
    QCOMPARE(downloads.entryList(), before);
    QCOMPARE(pages.in(QStringLiteral("location.href")), pages.address(QStringLiteral("Page.html")));
    QVERIFY(!pages.saysNotAvailable());
}

QTEST_MAIN(tst_WebViewLinks)
#include "tst_WebViewLinks.moc"
