// SPDX-License-Identifier: Apache-2.0
#include "tests/package/LogCapture.h"
#include "tests/welcome/webview/HelpPages.h"

#include <QtTest>

namespace {

const QString refused = QStringLiteral("{ ret:999 }");

QString quoted(const QString &text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

} // namespace

/// What the scripts of a page can do with the tool.
class tst_WebViewBridge : public QObject
{
    Q_OBJECT

private slots:
    void aCallWithoutAHandlerIsRefused();
    void aCallReachesTheHandlerAndGetsItsAnswer();
    void theAnswerIsThereWhenTheCallReturns();
    void anAsynchronousCallReachesTheHandlerAndReturnsNothing();
    void textOfEveryKindPassesUnchanged();
    void aCallWithTooFewTextsGetsEmptyOnes();
    void externalHasTwoMethodsAndNothingElse();
    void aPageCannotReplaceExternal();
    void thePagesOwnDialogsAnswerAtOnce();
    void theKeyOfTheBridgeStaysHidden();
    void aPageThatChangesTheLanguageStillGetsAnswers();
    void everyCallIsLogged();
    void anUnreasonablyLongTextIsRefused();
    void aLongTextPasses();
    void aFloodOfCallsIsRefusedAndTheWindowStaysAlive();
    void aFloodOfTheOriginalDialogsLeavesTheWindowAlive();
    void callsPassAgainAfterAFlood();
    void theViewItselfRefusesAFlood();
    void noScriptRunsWhileAnotherWaitsForItsAnswer();
    void aHandlerMayDeleteNothingButLoadAnotherPage();
};

void tst_WebViewBridge::aCallWithoutAHandlerIsRefused()
{
    HelpPages pages;
    pages.open("<script>answer = external.DispatchFun('a', 'b', 'c')</script>");
    QCOMPARE(pages.in(QStringLiteral("answer")), refused);
    QCOMPARE(pages.in(QStringLiteral("external.DispatchFunAsync('a', 'b', 'c', 'd')")), refused);
}

void tst_WebViewBridge::aCallReachesTheHandlerAndGetsItsAnswer()
{
    RecordingHandler handler;
    HelpPages pages(&handler);
    pages.open("");
    QCOMPARE(pages.in(QStringLiteral("external.DispatchFun('module', 'function', 'parameter')")),
             QStringLiteral("answer"));
    const QStringList call{QStringLiteral("module"), QStringLiteral("function"), QStringLiteral("parameter")};
    QCOMPARE(handler.calls, QList<QStringList>{call});
}

void tst_WebViewBridge::theAnswerIsThereWhenTheCallReturns()
{
    RecordingHandler handler;
    handler.onCall = [&handler] { handler.answer = QString::number(handler.calls.size()); };
    HelpPages pages(&handler);
    pages.open(
        "<script>all = ''; for (i = 0; i < 5; ++i) all += window.external.DispatchFun('', '', '')</script>");
    QCOMPARE(pages.in(QStringLiteral("all")), QStringLiteral("12345"));
}

void tst_WebViewBridge::anAsynchronousCallReachesTheHandlerAndReturnsNothing()
{
    RecordingHandler handler;
    HelpPages pages(&handler);
    pages.open("<script>answer = external.DispatchFunAsync('a', 'b', 'c', 'd')</script>");
    QCOMPARE(pages.in(QStringLiteral("JSON.stringify(answer)")), quoted(QString()));
    const QStringList call{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"),
                           QStringLiteral("d")};
    QCOMPARE(handler.asyncCalls, QList<QStringList>{call});
    QVERIFY(handler.calls.isEmpty());
}

void tst_WebViewBridge::textOfEveryKindPassesUnchanged()
{
    RecordingHandler handler;
    handler.answer = QString::fromUtf8("“ä”\n\t\\'\"\u2028 😀");
    HelpPages pages(&handler);
    pages.open("");
    const QString script = QStringLiteral("external.DispatchFun('%1', '[\"\\\\]', '%2')");
    QCOMPARE(pages.in(script.arg(QString::fromUtf8("ß😀"), QStringLiteral("line\\nbreak"))), handler.answer);
    const QStringList call{QString::fromUtf8("ß😀"), QStringLiteral("[\"\\]"), QStringLiteral("line\nbreak")};
    QCOMPARE(handler.calls, QList<QStringList>{call});
}

void tst_WebViewBridge::aCallWithTooFewTextsGetsEmptyOnes()
{
    RecordingHandler handler;
    HelpPages pages(&handler);
    pages.open("<script>external.DispatchFun(); external.DispatchFun(1, null, true, 'more')</script>");
    QCOMPARE(handler.calls.size(), 2);
    const QStringList numbers{QStringLiteral("1"), QString(), QStringLiteral("true")};
    QCOMPARE(handler.calls.first().join(QString()), QString());
    QCOMPARE(handler.calls.last(), numbers);
}

void tst_WebViewBridge::externalHasTwoMethodsAndNothingElse()
{
    HelpPages pages;
    pages.open("<script>all = []; for (o = external; o; o = Object.getPrototypeOf(o))"
               "all = all.concat(Object.getOwnPropertyNames(o), Object.getOwnPropertySymbols(o))</script>");
    QCOMPARE(pages.in(QStringLiteral("all.sort().join()")), QStringLiteral("DispatchFun,DispatchFunAsync"));
    QCOMPARE(pages.in(QStringLiteral("typeof external.DispatchFun + typeof external.DispatchFunAsync")),
             QStringLiteral("functionfunction"));
}

void tst_WebViewBridge::aPageCannotReplaceExternal()
{
    RecordingHandler handler;
    HelpPages pages(&handler);
    pages.open("<script>external = 1; window.external = 2; delete window.external;"
               "try { Object.defineProperty(window, 'external', { value: 3 }) } catch (e) {}"
               "external.DispatchFun = () => 'mine'; external.other = 4;</script>");
    QCOMPARE(pages.in(QStringLiteral("external.DispatchFun('a', 'b', 'c')")), handler.answer);
    QCOMPARE(pages.in(QStringLiteral("typeof external.other")), QStringLiteral("undefined"));
}

void tst_WebViewBridge::thePagesOwnDialogsAnswerAtOnce()
{
    RecordingHandler handler;
    HelpPages pages(&handler);
    pages.open(
        "<script>alert('a'); answers = confirm('c') + ' ' + prompt('DispatchFun', '[\"DispatchFun\"]');"
        "frame = document.createElement('iframe'); document.body.append(frame);"
        "answers += ' ' + frame.contentWindow.prompt('DispatchFun', '[\"DispatchFun\"]')</script>");
    QCOMPARE(pages.in(QStringLiteral("answers")), QStringLiteral("false null null"));
    QVERIFY(handler.calls.isEmpty());
    QVERIFY(!QApplication::activeModalWidget());
}

void tst_WebViewBridge::theKeyOfTheBridgeStaysHidden()
{
    HelpPages pages;
    pages.open(
        "<script>seen = ''; Array.prototype.toJSON = function () { seen += this.join(); return this; };"
        "external.DispatchFun('a', 'b', 'c'); delete Array.prototype.toJSON;"
        "seen += external.DispatchFun.toString() + external.DispatchFunAsync</script>");
    const QString seen = pages.in(QStringLiteral("seen"));
    QVERIFY(seen.contains(QLatin1String("DispatchFun,a,b,c")));
    const QRegularExpression key(QStringLiteral("[0-9a-f]{8}-[0-9a-f]{4}"));
    QVERIFY2(!seen.contains(key), qPrintable(seen));
}

void tst_WebViewBridge::aPageThatChangesTheLanguageStillGetsAnswers()
{
    RecordingHandler handler;
    HelpPages pages(&handler);
    pages.open("<script>window.prompt = JSON.stringify = String = Date.now = Object.freeze = "
               "() => { throw 'no' }</script>");
    QCOMPARE(pages.in(QStringLiteral("external.DispatchFun('a', 'b', 'c')")), handler.answer);
}

void tst_WebViewBridge::everyCallIsLogged()
{
    HelpPages pages;
    pages.open("");
    const LogCapture log;
    pages.view->DispatchFun(QStringLiteral("m"), QStringLiteral("f"), QStringLiteral("two\nlines"));
    pages.view->DispatchFunAsync(QStringLiteral("m"), QStringLiteral("f"), QStringLiteral("p"),
                                 QStringLiteral("c"));
    const QStringList expected{QStringLiteral("WebViewInQt::DispatchFun-----strModule = m"),
                               QStringLiteral("WebViewInQt::DispatchFun-----strFuncName = f"),
                               QStringLiteral("WebViewInQt::DispatchFun-----strParam = two\\nlines"),
                               QStringLiteral("WebViewInQt::DispatchFunAsync-----strModule = m"),
                               QStringLiteral("WebViewInQt::DispatchFunAsync-----strFuncName = f"),
                               QStringLiteral("WebViewInQt::DispatchFunAsync-----strParam = p"),
                               QStringLiteral("WebViewInQt::DispatchFunAsync-----callback = c")};
    QCOMPARE(log.lines(), expected);
}

void tst_WebViewBridge::anUnreasonablyLongTextIsRefused()
{
    RecordingHandler handler;
    HelpPages pages(&handler);
    pages.open("");
    QCOMPARE(pages.in(QStringLiteral("external.DispatchFun('a', 'b', 'x'.repeat(50 << 20))")), refused);
    QVERIFY(handler.calls.isEmpty());
    const LogCapture log;
    const QString tooLong((1 << 20) + 1, QLatin1Char('x'));
    QCOMPARE(pages.view->DispatchFun(QString(), QString(), tooLong).toString(), refused);
    QCOMPARE(pages.view->DispatchFunAsync(QString(), QString(), tooLong, QString()).toString(), refused);
    QVERIFY(handler.calls.isEmpty() && handler.asyncCalls.isEmpty());
    QCOMPARE(log.lines().size(), 2);
    QVERIFY(log.has(QStringLiteral("A help page called with too much text: the call is refused.")));
}

void tst_WebViewBridge::aLongTextPasses()
{
    RecordingHandler handler;
    HelpPages pages(&handler);
    pages.open("");
    const LogCapture log;
    QCOMPARE(pages.in(QStringLiteral("external.DispatchFun('a', 'b', 'x'.repeat((1 << 20) - 2))")),
             handler.answer);
    QCOMPARE(handler.calls.first().last().size(), (1 << 20) - 2);
    for (const QString &line : log.lines())
        QVERIFY(line.size() < 2000);
}

void tst_WebViewBridge::aFloodOfCallsIsRefusedAndTheWindowStaysAlive()
{
    RecordingHandler handler;
    HelpPages pages(&handler);
    pages.open("");
    const LogCapture log;
    int ticks = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&ticks] { ++ticks; });
    timer.start(1);
    QCOMPARE(pages.in(QStringLiteral("refusals = 0; for (i = 0; i < 300000; ++i)"
                                     "refusals += external.DispatchFun('a', 'b', 'c') == '{ ret:999 }';"
                                     "external.DispatchFun('last', 'b', 'c')")),
             refused);
    QVERIFY(ticks > 10);
    // At most a hundred in each second that the flood lasted, and each of them three lines.
    QVERIFY(handler.calls.size() >= 100);
    QVERIFY2(handler.calls.size() < 3000, qPrintable(QString::number(handler.calls.size())));
    QVERIFY(log.lines().size() < 3 * handler.calls.size() + 100);
    QVERIFY(log.has(
        QStringLiteral("A help page calls too often: its calls are refused for the rest of the second.")));
}

void tst_WebViewBridge::aFloodOfTheOriginalDialogsLeavesTheWindowAlive()
{
    RecordingHandler handler;
    HelpPages pages(&handler);
    pages.open("<script>frame = document.createElement('iframe'); document.body.append(frame);"
               "flood = () => { for (;;) frame.contentWindow.prompt('a', 'b') }</script>");
    pages.in(QStringLiteral("setTimeout(flood, 1)"));
    int ticks = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&ticks] { ++ticks; });
    timer.start(1);
    QTRY_VERIFY(ticks > 100);
    QVERIFY(handler.calls.isEmpty());
}

void tst_WebViewBridge::callsPassAgainAfterAFlood()
{
    RecordingHandler handler;
    HelpPages pages(&handler);
    pages.open("<script>for (i = 0; i < 100000; ++i) external.DispatchFun('a', 'b', 'c')</script>");
    QTRY_COMPARE(pages.in(QStringLiteral("external.DispatchFun('a', 'b', 'c')")), handler.answer);
}

void tst_WebViewBridge::theViewItselfRefusesAFlood()
{
    RecordingHandler handler;
    WebViewInQt view;
    view.SetWebViewHandler(&handler);
    const LogCapture log;
    QString last;
    for (int call = 0; call < 5000 && last != refused; ++call)
        last = view.DispatchFun(QString(), QString(), QString()).toString();
    QCOMPARE(last, refused);
    QCOMPARE(
        log.lines().last(),
        QStringLiteral("A help page calls too often: its calls are refused for the rest of the second."));
}

void tst_WebViewBridge::noScriptRunsWhileAnotherWaitsForItsAnswer()
{
    RecordingHandler handler;
    HelpPages pages(&handler);
    pages.open("");
    QString inner = QStringLiteral("not asked");
    handler.onCall = [&] { inner = pages.view->runJavascript(QStringLiteral("'inner'")); };
    QCOMPARE(pages.in(QStringLiteral("external.DispatchFun('a', 'b', 'c')")), handler.answer);
    QCOMPARE(inner, QString());
}

void tst_WebViewBridge::aHandlerMayDeleteNothingButLoadAnotherPage()
{
    RecordingHandler handler;
    HelpPages pages(&handler);
    const QString other = pages.add(QStringLiteral("Other.html"), "other");
    pages.open("<button id='b' onclick=\"external.DispatchFun('a', 'b', 'c')\">b</button>");
    handler.onCall = [&] { pages.view->loadRequest(other); };
    pages.click(QStringLiteral("b"));
    QTRY_COMPARE(pages.in(QStringLiteral("document.body.innerText")), QStringLiteral("other"));
    QCOMPARE(handler.calls.size(), 1);
}

QTEST_MAIN(tst_WebViewBridge)
#include "tst_WebViewBridge.moc"
