// SPDX-License-Identifier: Apache-2.0
#include "tests/package/LogCapture.h"
#include "tests/support/TestFiles.h"
#include "tests/welcome/webview/HelpPages.h"

#include <QtTest>

#include <csignal>
#include <sys/stat.h>

namespace {

const QList<int> once{0};

/// Empty when the process has ended meanwhile.
QString parentOf(const QString &process)
{
    QFile source(QStringLiteral("/proc/%1/stat").arg(process));
    if (!source.open(QIODevice::ReadOnly))
        return {};
    // Behind the name, which is in parentheses: the state and the parent.
    return QString::fromLatin1(source.readAll())
        .section(QLatin1String(") "), -1)
        .section(QLatin1Char(' '), 1, 1);
}

/// Ends the processes that run the scripts of this test's pages, which are children of the engine's
/// helpers; false when there is none.
bool killRenderers()
{
    const QString test = QString::number(QCoreApplication::applicationPid());
    bool found = false;
    for (const QString &process : QDir(QStringLiteral("/proc")).entryList({QStringLiteral("[0-9]*")})) {
        if (parentOf(parentOf(process)) == test)
            found = kill(process.toInt(), SIGKILL) == 0;
    }
    return found;
}

} // namespace

/// What loading a page leads to.
class tst_WebViewLoading : public QObject
{
    Q_OBJECT

private slots:
    void aPageThatIsThereIsShownAndNotified();
    void aPageThatIsMissingIsNotifiedAndSaidSo();
    void whatIsNoPageIsNotAvailable_data();
    void whatIsNoPageIsNotAvailable();
    void theViewRecoversWithTheNextPage();
    void theSamePageIsThereAgainAfterAFailure();
    void anAnchorAfterAFailureShowsThePage();
    void aMissingPictureIsNotifiedAndThePageStays();
    void aLoadThatAnotherReplacesIsNoError();
    void aLoadThatThePageStopsIsNoError();
    void namesMayHoldBlanksAndPercentSigns();
    void anotherAnchorOnlyScrolls();
    void theSameAddressOnlyScrolls();
    void onePageAfterTheOtherIsOneView();
    void aPageCannotHoldTheViewBack();
    void aDeadPageIsNotAvailableUntilTheNextLoad();
    void theAddressOfTheEndIsKept();
    void theAddressThatIsGoneToIsSignalled();
    void theSecondConstructorLoads();
    void aViewMayGoWhileItLoads();
};

void tst_WebViewLoading::aPageThatIsThereIsShownAndNotified()
{
    RecordingHandler handler;
    HelpPages pages(&handler);
    pages.open("here");
    QTRY_COMPARE(handler.codes, once);
    QVERIFY(handler.notifiedAsAgreed);
    QVERIFY(!pages.saysNotAvailable());
}

void tst_WebViewLoading::aPageThatIsMissingIsNotifiedAndSaidSo()
{
    RecordingHandler handler;
    HelpPages pages(&handler);
    pages.view->loadRequest(pages.address(QStringLiteral("Missing.html")));
    QTRY_COMPARE(handler.codes, once);
    QVERIFY(handler.notifiedAsAgreed);
    QVERIFY(pages.saysNotAvailable());
    QTest::qWait(200);
    QVERIFY(pages.saysNotAvailable());
    QCOMPARE(handler.codes, once);
}

void tst_WebViewLoading::whatIsNoPageIsNotAvailable_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("folder") << QStringLiteral("folder");
    QTest::newRow("pipe") << QStringLiteral("pipe");
    QTest::newRow("link to nothing") << QStringLiteral("link");
    QTest::newRow("unreadable file") << QStringLiteral("unreadable");
    QTest::newRow("no file") << QStringLiteral("http://127.0.0.1/");
    QTest::newRow("nothing") << QString();
}

void tst_WebViewLoading::whatIsNoPageIsNotAvailable()
{
    QFETCH(QString, name);
    HelpPages pages;
    pages.open("before");
    QVERIFY(QDir().mkdir(pages.path(QStringLiteral("folder"))));
    QCOMPARE(mkfifo(QFile::encodeName(pages.path(QStringLiteral("pipe"))).constData(), 0600), 0);
    QVERIFY(QFile::link(QStringLiteral("/nowhere"), pages.path(QStringLiteral("link"))));
    TestFiles::write(pages.path(QStringLiteral("unreadable")), "x");
    QVERIFY(QFile::setPermissions(pages.path(QStringLiteral("unreadable")), {}));
    if (name == QLatin1String("unreadable") && QFileInfo(pages.path(name)).isReadable())
        QSKIP("nothing is unreadable for root");
    pages.view->loadRequest(name.contains(QLatin1Char(':')) ? name : pages.address(name));
    QTRY_VERIFY(pages.saysNotAvailable());
}

void tst_WebViewLoading::theViewRecoversWithTheNextPage()
{
    RecordingHandler handler;
    HelpPages pages(&handler);
    pages.view->loadRequest(pages.address(QStringLiteral("Missing.html")));
    QTRY_VERIFY(pages.saysNotAvailable());
    pages.open("there");
    QTRY_VERIFY(!pages.saysNotAvailable());
    QTRY_COMPARE(handler.codes.size(), 2);
}

void tst_WebViewLoading::theSamePageIsThereAgainAfterAFailure()
{
    HelpPages pages;
    pages.open("there");
    pages.view->loadRequest(pages.address(QStringLiteral("Missing.html")));
    QTRY_VERIFY(pages.saysNotAvailable());
    pages.open("there");
    QTRY_VERIFY(!pages.saysNotAvailable());
}

void tst_WebViewLoading::anAnchorAfterAFailureShowsThePage()
{
    HelpPages pages;
    pages.open("there");
    pages.view->loadRequest(pages.address(QStringLiteral("Missing.html")));
    QTRY_VERIFY(pages.saysNotAvailable());
    pages.view->loadRequest(pages.address(QStringLiteral("Page.html"), QStringLiteral("anchor")));
    QTRY_VERIFY(!pages.saysNotAvailable());
}

void tst_WebViewLoading::aMissingPictureIsNotifiedAndThePageStays()
{
    RecordingHandler handler;
    HelpPages pages(&handler);
    pages.open("<img src='missing.png'>");
    QTRY_COMPARE(handler.codes.size(), 2);
    QVERIFY(!pages.saysNotAvailable());
    QVERIFY(handler.calls.isEmpty());
}

void tst_WebViewLoading::aLoadThatAnotherReplacesIsNoError()
{
    RecordingHandler handler;
    HelpPages pages(&handler);
    const QString slow = pages.add(QStringLiteral("Slow.html"), QByteArray(8 << 20, 'x'));
    pages.add(QStringLiteral("Page.html"), "here");
    pages.view->loadRequest(slow);
    QTest::qWait(30);
    pages.openAddress(pages.address(QStringLiteral("Page.html")));
    QTest::qWait(200);
    QVERIFY(!pages.saysNotAvailable());
    QVERIFY2(handler.codes.size() <= 2, "more notifications than loads");
}

void tst_WebViewLoading::aLoadThatThePageStopsIsNoError()
{
    RecordingHandler handler;
    HelpPages pages(&handler);
    pages.add(QStringLiteral("Other.html"), "other");
    pages.open(
        "<script>setTimeout(() => { location = 'Other.html'; window.stop(); tried = true }, 1)</script>");
    QTRY_COMPARE(pages.in(QStringLiteral("window.tried")), QStringLiteral("true"));
    QTest::qWait(200);
    QCOMPARE(handler.codes, once);
    QVERIFY(!pages.saysNotAvailable());
}

void tst_WebViewLoading::namesMayHoldBlanksAndPercentSigns()
{
    HelpPages pages;
    const QString name = QString::fromUtf8("50%20 off #1? ü.html");
    pages.add(name, "<div style='height: 5000px'></div><p id='Start Page'>low</p>");
    pages.openAddress(pages.address(name, QStringLiteral("Start Page")));
    QTRY_VERIFY(pages.in(QStringLiteral("scrollY")).toDouble() > 1000);
    QVERIFY(!pages.saysNotAvailable());
}

void tst_WebViewLoading::anotherAnchorOnlyScrolls()
{
    HelpPages pages;
    pages.open("<div style='height: 5000px'></div><p id='low'>low</p>");
    QCOMPARE(pages.in(QStringLiteral("mark = 'set'")), QStringLiteral("set"));
    pages.view->loadRequest(pages.address(QStringLiteral("Page.html"), QStringLiteral("low")));
    QTRY_VERIFY(pages.in(QStringLiteral("scrollY")).toDouble() > 1000);
    QCOMPARE(pages.in(QStringLiteral("mark")), QStringLiteral("set"));
}

void tst_WebViewLoading::theSameAddressOnlyScrolls()
{
    HelpPages pages;
    pages.open("<div style='height: 5000px'></div><p id='low'>low</p>");
    const QString low = pages.address(QStringLiteral("Page.html"), QStringLiteral("low"));
    pages.openAddress(low);
    pages.in(QStringLiteral("mark = 'set'; scrollTo(0, 10); 0"));
    pages.view->loadRequest(low);
    QTRY_VERIFY(pages.in(QStringLiteral("scrollY")).toDouble() > 1000);
    QCOMPARE(pages.in(QStringLiteral("mark")), QStringLiteral("set"));
}

void tst_WebViewLoading::onePageAfterTheOtherIsOneView()
{
    HelpPages pages;
    pages.open("first");
    const int before = pages.view->findChildren<QWidget *>().size();
    pages.openAddress(pages.add(QStringLiteral("Second.html"), "second"));
    QCOMPARE(pages.in(QStringLiteral("document.body.innerText")), QStringLiteral("second"));
    QCOMPARE(pages.view->findChildren<QWidget *>().size(), before);
}

void tst_WebViewLoading::aPageCannotHoldTheViewBack()
{
    HelpPages pages;
    pages.open(
        "<button id='b'>b</button><script>onbeforeunload = e => 'stay';"
        "addEventListener('beforeunload', e => { e.preventDefault(); e.returnValue = 'stay' })</script>");
    // Only a page that was touched may ask.
    pages.click(QStringLiteral("b"));
    pages.openAddress(pages.add(QStringLiteral("Other.html"), "other"));
    QCOMPARE(pages.in(QStringLiteral("document.body.innerText")), QStringLiteral("other"));
}

void tst_WebViewLoading::aDeadPageIsNotAvailableUntilTheNextLoad()
{
    if (!QFileInfo::exists(QStringLiteral("/proc/self")))
        QSKIP("a Mac's web view has no process of its own for pages");
    RecordingHandler handler;
    HelpPages pages(&handler);
    pages.open("here");
    QVERIFY(killRenderers());
    QTRY_VERIFY(pages.saysNotAvailable());
    pages.open("again");
    QTRY_VERIFY(!pages.saysNotAvailable());
}

void tst_WebViewLoading::theAddressOfTheEndIsKept()
{
    WebViewInQt view;
    QCOMPARE(view.GetNavigateEndURL(), QString());
    view.SetNavigateEndURL(QStringLiteral("any text"));
    QCOMPARE(view.GetNavigateEndURL(), QStringLiteral("any text"));
}

void tst_WebViewLoading::theAddressThatIsGoneToIsSignalled()
{
    HelpPages pages;
    const QSignalSpy signal(pages.view.get(), &WebViewInQt::SignalAcceptNatigationRequest);
    const LogCapture log;
    pages.open("");
    QCOMPARE(signal.size(), 1);
    QCOMPARE(signal.first().first().toString(), pages.address(QStringLiteral("Page.html")));
    QVERIFY(log.has(QStringLiteral("webView:(WebView *)sender decidePolicyForNavigationAction {}")));
    QVERIFY(log.has(QStringLiteral("main frame url ") + pages.address(QStringLiteral("Page.html"))));
}

void tst_WebViewLoading::theSecondConstructorLoads()
{
    HelpPages pages;
    const QString address = pages.add(QStringLiteral("Page.html"), "");
    pages.view = std::make_unique<WebViewInQt>(address);
    pages.view->show();
    QTRY_COMPARE(pages.in(QStringLiteral("location.href")), address);
    QVERIFY(!pages.in(QStringLiteral("navigator.userAgent")).contains(QLatin1String("Mac OS X 10_14_6")));
}

void tst_WebViewLoading::aViewMayGoWhileItLoads()
{
    RecordingHandler handler;
    {
        HelpPages pages(&handler);
        pages.view->loadRequest(pages.add(QStringLiteral("Page.html"), QByteArray(1 << 20, 'x')));
        QTest::qWait(20);
    }
    handler.codes.clear();
    QTest::qWait(200);
    QVERIFY(handler.codes.isEmpty());
}

QTEST_MAIN(tst_WebViewLoading)
#include "tst_WebViewLoading.moc"
