// SPDX-License-Identifier: Apache-2.0
#include "tests/package/LogCapture.h"
#include "tests/welcome/webview/HelpPages.h"

#include <QtTest>

/// The scripts that the tool runs in a page, and what it keeps there.
class tst_WebViewScripts : public QObject
{
    Q_OBJECT

private slots:
    void aScriptWithoutEndLeavesTheWindowAlive();
    void aScriptsResultIsText_data();
    void aScriptsResultIsText();
    void aFailedScriptIsLogged();
    void storageGoesThereAndBack();
    void storageFailsInSilence_data();
    void storageFailsInSilence();
    void storageEndsWithTheView();
};

void tst_WebViewScripts::aScriptWithoutEndLeavesTheWindowAlive()
{
    HelpPages pages;
    pages.open("<script>setTimeout(() => { for (;;); }, 100)</script>");
    QTest::qWait(300);
    int ticks = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&ticks] { ++ticks; });
    timer.start(1);
    QCOMPARE(pages.in(QStringLiteral("'never'")), QString());
    QVERIFY(ticks > 10);
}

void tst_WebViewScripts::aScriptsResultIsText_data()
{
    QTest::addColumn<QString>("script");
    QTest::addColumn<QString>("result");
    QTest::newRow("text") << QStringLiteral("'a' + 'b'") << QStringLiteral("ab");
    QTest::newRow("empty text") << QStringLiteral("''") << QString();
    QTest::newRow("number") << QStringLiteral("6 * 7") << QStringLiteral("42");
    QTest::newRow("truth value") << QStringLiteral("1 < 2") << QStringLiteral("true");
    QTest::newRow("object") << QStringLiteral("({ a: 1 })") << QStringLiteral("{\"a\":1}");
    QTest::newRow("list") << QStringLiteral("[1, 'b']") << QStringLiteral("[1,\"b\"]");
}

void tst_WebViewScripts::aScriptsResultIsText()
{
    QFETCH(QString, script);
    HelpPages pages;
    pages.open("");
    const LogCapture log;
    QTEST(pages.in(script), "result");
    QFETCH(QString, result);
    QVERIFY(log.has(QStringLiteral("ret = ") + result));
}

void tst_WebViewScripts::aFailedScriptIsLogged()
{
    HelpPages pages;
    pages.open("<script>window.onerror = 'the handler'</script>");
    const LogCapture log;
    QCOMPARE(pages.in(QStringLiteral("null")), QString());
    QCOMPARE(pages.in(QStringLiteral("throw 1")), QString());
    QCOMPARE(log.lines().filter(QStringLiteral("JavaScript execution error: ")).size(), 2);
    QVERIFY(!log.lines().join(QString()).contains(QLatin1String("ret = ")));
}

void tst_WebViewScripts::storageGoesThereAndBack()
{
    HelpPages pages;
    pages.open("");
    pages.view->SetStorageData(
        QString::fromUtf8("{\"key\": \"value\", \"%1 %2\": \"50 % ä \\\"\", \"number\": 5, \"yes\": true}"));
    const QJsonObject items = QJsonDocument::fromJson(pages.view->GetStorageData().toUtf8()).object();
    const QJsonObject expected{{QStringLiteral("key"), QStringLiteral("value")},
                               {QStringLiteral("%1 %2"), QString::fromUtf8("50 % ä \"")},
                               {QStringLiteral("number"), QStringLiteral("5")},
                               {QStringLiteral("yes"), QStringLiteral("true")}};
    QCOMPARE(items, expected);
    QCOMPARE(pages.in(QStringLiteral("localStorage.getItem('key')")), QStringLiteral("value"));
}

void tst_WebViewScripts::storageFailsInSilence_data()
{
    QTest::addColumn<QString>("json");
    QTest::newRow("single quote") << QStringLiteral("{\"key\": \"it's\"}");
    QTest::newRow("single quote in the key") << QStringLiteral("{\"k'ey\": \"value\"}");
    QTest::newRow("list") << QStringLiteral("[1]");
    QTest::newRow("no JSON") << QStringLiteral("{key");
    QTest::newRow("nothing") << QString();
}

void tst_WebViewScripts::storageFailsInSilence()
{
    QFETCH(QString, json);
    HelpPages pages;
    pages.open("");
    const LogCapture log;
    pages.view->SetStorageData(json);
    QCOMPARE(pages.view->GetStorageData(), QStringLiteral("{}"));
    QCOMPARE(log.lines().filter(QStringLiteral("JavaScript execution error")), QStringList());
}

void tst_WebViewScripts::storageEndsWithTheView()
{
    {
        HelpPages pages;
        pages.open("");
        pages.view->SetStorageData(QStringLiteral("{\"key\": \"value\"}"));
        QCOMPARE(pages.view->GetStorageData(), QStringLiteral("{\"key\":\"value\"}"));
    }
    HelpPages pages;
    pages.open("");
    QCOMPARE(pages.view->GetStorageData(), QStringLiteral("{}"));
}

QTEST_MAIN(tst_WebViewScripts)
#include "tst_WebViewScripts.moc"
