// SPDX-License-Identifier: Apache-2.0
#include "tests/package/LogCapture.h"
#include "tests/support/TestFiles.h"
#include "welcome/webview/WebViewInQt.h"

#include <QLabel>
#include <QtTest>

/// A machine that cannot show pages: no module, a broken one, or no OpenGL.
class tst_WebViewUnavailable : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void theMessageStandsInThePlaceOfThePage_data();
    void theMessageStandsInThePlaceOfThePage();
    void everyOperationIsHarmless();

private:
    QTemporaryDir m_folder;
};

void tst_WebViewUnavailable::init()
{
    qputenv("PCT_MODULES", QFile::encodeName(m_folder.path()));
    QFile::remove(m_folder.filePath(QStringLiteral("pct-webengine.so")));
}

void tst_WebViewUnavailable::theMessageStandsInThePlaceOfThePage_data()
{
    QTest::addColumn<QByteArray>("module");
    QTest::newRow("missing") << QByteArray();
    QTest::newRow("no module") << QByteArray("no module at all");
}

void tst_WebViewUnavailable::theMessageStandsInThePlaceOfThePage()
{
    QFETCH(QByteArray, module);
    if (!module.isEmpty())
        TestFiles::write(m_folder.filePath(QStringLiteral("pct-webengine.so")), module);
    const LogCapture log;
    WebViewInQt view(QStringLiteral("file:///tmp/Page.html"));
    view.show();
    const auto *message = view.findChild<QLabel *>();
    QVERIFY(message->isVisible());
    QCOMPARE(message->text(), QStringLiteral("The help page is not available."));
    QCOMPARE(log.lines().filter(QStringLiteral("Help pages cannot be shown: ")).size(), 1);
}

void tst_WebViewUnavailable::everyOperationIsHarmless()
{
    WebViewInQt view;
    view.loadRequest(QStringLiteral("file:///tmp/Page.html"));
    view.SetStorageData(QStringLiteral("{\"key\": \"value\"}"));
    QCOMPARE(view.GetStorageData(), QString());
    QCOMPARE(view.runJavascript(QStringLiteral("1")), QString());
    QCOMPARE(view.DispatchFun(QString(), QString(), QString()).toString(), QStringLiteral("{ ret:999 }"));
}

QTEST_MAIN(tst_WebViewUnavailable)
#include "tst_WebViewUnavailable.moc"
