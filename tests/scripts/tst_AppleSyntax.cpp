// SPDX-License-Identifier: Apache-2.0
#include "tests/support/TestFiles.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr int toolsMissing = 77;

struct Check
{
    int exitCode = -1;
    QString messages;
};

Check check(const QStringList &files)
{
    QProcess script;
    script.setProcessChannelMode(QProcess::MergedChannels);
    script.start(QStringLiteral(PCT_SOURCE_DIR "/scripts/check-apple-syntax.sh"),
                 QStringList{QStringLiteral(PCT_QT_HEADERS)} + files);
    if (!script.waitForFinished(-1) || script.exitStatus() != QProcess::NormalExit)
        return {};
    return {script.exitCode(), QString::fromUtf8(script.readAll())};
}

QString sourcePath(const char *name)
{
    return QStringLiteral(PCT_SOURCE_DIR "/") + QLatin1String(name);
}

constexpr const char *sample = "tests/scripts/AppleSample_mac.mm";
constexpr const char *hostName = "profile/LocalHostName_mac.cpp";

} // namespace

/// The syntax check is worth something only if it finds what Apple's compiler would find.
class tst_AppleSyntax : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void aRightFilePasses_data();
    void aRightFilePasses();
    void aMistakeIsFound_data();
    void aMistakeIsFound();
    void aMissingFileIsAFailure();
    void wrongUsageIsTold();
};

void tst_AppleSyntax::initTestCase()
{
    const Check first = check({sourcePath(hostName)});
    if (first.exitCode == toolsMissing)
        QSKIP(qPrintable(first.messages));
}

void tst_AppleSyntax::aRightFilePasses_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("a web view") << sourcePath(sample);
    QTest::newRow("the local host name") << sourcePath(hostName);
}

void tst_AppleSyntax::aRightFilePasses()
{
    QFETCH(QString, path);
    const Check result = check({path});
    QVERIFY2(result.exitCode == 0, qPrintable(result.messages));
}

void tst_AppleSyntax::aMistakeIsFound_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("right");
    QTest::addColumn<QByteArray>("wrong");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *name, const char *file, const char *right, const char *wrong,
                        const char *message) {
        QTest::newRow(name) << sourcePath(file) << QByteArray(right) << QByteArray(wrong)
                            << QString::fromLatin1(message);
    };
    row("a missing semicolon", sample, "[listener ignore];", "[listener ignore]", "expected ';'");
    row("a misspelt message", sample, "[view mainFrame]", "[view mainFrane]", "mainFrane");
    row("another class's method", sample, "[frame name]", "[frame windowScriptObject]", "windowScriptObject");
    row("a misspelt class method", sample, "requestWithURL:", "requestWithUrl:", "requestWithUrl:");
    row("a misspelt delegate setter", sample, "setUIDelegate:", "setUiDelegate:", "setUiDelegate:");
    row("a listener's method that there is not", sample, "[listener ignore]", "[listener refuse]", "-refuse");
    row("an unknown selector", sample, "selector != @selector(answer:)", "selector != @selector(replies:)",
        "undeclared selector 'replies:'");
    row("a misspelt constant", sample, "WebActionNavigationTypeKey", "WebActionNavigationKey",
        "'WebActionNavigationKey'");
    row("a delegate that does not say so", sample, "WebResourceLoadDelegate, WebUIDelegate", "WebUIDelegate",
        "WebResourceLoadDelegate");
    row("a forgotten conversion", sample, ".toString().toNSString()", ".toString()", "QString");
    row("a misspelt function", hostName, "SCDynamicStoreCopyLocalHostName", "SCDynamicStoreCopyHostName",
        "SCDynamicStoreCopyHostName");
    row("another type", hostName, "const CFStringRef name", "const CFArrayRef name", "CFArrayRef");
    row("a missing header", hostName, "SystemConfiguration.h", "SystemConfig.h", "file not found");
}

void tst_AppleSyntax::aMistakeIsFound()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, right);
    QFETCH(QByteArray, wrong);
    QFETCH(QString, message);
    const QByteArray text = TestFiles::read(path);
    QVERIFY2(text.contains(right), "what is to be broken is not there");

    const QTemporaryDir folder;
    const QString copy = folder.filePath(QFileInfo(path).fileName());
    TestFiles::write(copy, QByteArray(text).replace(right, wrong));
    const Check result = check({copy});
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.messages.contains(message), qPrintable(result.messages));
}

void tst_AppleSyntax::aMissingFileIsAFailure()
{
    QCOMPARE(check({sourcePath("profile/NoSuchFile_mac.mm")}).exitCode, 1);
}

void tst_AppleSyntax::wrongUsageIsTold()
{
    QProcess script;
    script.start(sourcePath("scripts/check-apple-syntax.sh"), {QStringLiteral("/nonexistent")});
    QVERIFY(script.waitForFinished());
    QCOMPARE(script.exitCode(), 2);
    QVERIFY(script.readAllStandardError().startsWith("usage:"));
}

QTEST_GUILESS_MAIN(tst_AppleSyntax)
#include "tst_AppleSyntax.moc"
