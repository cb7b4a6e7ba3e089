// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/ProfileRunner.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

namespace {

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

QString madeProfile(const ProfileRunner &runner, bool editor)
{
    const QString path = runner.file(text("made.mobileconfig"));
    const PctResult made = runner.makeProfile(editor);
    if (made.exitCode != 0 || !QFile::rename(runner.output(), path))
        qFatal("no profile: %s", made.err.constData());
    return path;
}

} // namespace

/// `pct profile --installed`, and what the system's command may answer instead of a list.
class tst_PctProfileInstalled : public QObject
{
    Q_OBJECT

private slots:
    void installedProfilesThatCannotBeListedAreAFailure_data();
    void installedProfilesThatCannotBeListedAreAFailure();
    void whatIsNoListIsNotTakenForNoProfile_data();
    void whatIsNoListIsNotTakenForNoProfile();
    void whatSaysThatNoneIsInstalledIsNoFailure_data();
    void whatSaysThatNoneIsInstalledIsNoFailure();
    void withoutAnInstalledProfileThereIsNoSource();
};

void tst_PctProfileInstalled::installedProfilesThatCannotBeListedAreAFailure_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QByteArray>("cause");
    QTest::newRow("crashed") << QByteArray("kill -9 $$") << QByteArray("was ended by a signal");
    QTest::newRow("bad exit") << QByteArray("echo not now >&2; exit 3")
                              << QByteArray("ended with exit code 3: not now");
    QTest::newRow("too much") << QByteArray("head -c 34000000 /dev/zero")
                              << QByteArray("printed more than 32 MiB");
}

void tst_PctProfileInstalled::installedProfilesThatCannotBeListedAreAFailure()
{
    QFETCH(QByteArray, script);
    QFETCH(QByteArray, cause);
    const ProfileRunner runner;
    runner.replaceTool(text("profiles"), script);
    const PctResult result = runner.makeProfile(true, {text("--installed")});
    QVERIFY2(result.isOneLineRefusal() &&
                 result.err.contains(QByteArray("cannot be listed (/usr/bin/profiles " + cause + ")")),
             result.err.constData());
    QVERIFY(!QFile::exists(runner.output()));
}

void tst_PctProfileInstalled::whatIsNoListIsNotTakenForNoProfile_data()
{
    QTest::addColumn<QByteArray>("printed");
    QTest::addColumn<QByteArray>("cause");
    QTest::newRow("nothing") << QByteArray() << QByteArray("it is empty");
    QTest::newRow("no rights") << QByteArray("profiles: this command requires root privileges")
                               << QByteArray("profiles: this command requires root privileges");
    QTest::newRow("cut") << QByteArray("<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>a</key>")
                         << QByteArray("line 1, column ");
    QTest::newRow("a sentence behind half a list")
        << QByteArray("<plist version=\"1.0\"><dict>\nThere are no configuration profiles installed\n")
        << QByteArray("line 1, column ");
    QTest::newRow("another sentence behind an empty list")
        << QByteArray("<plist version=\"1.0\"><dict/></plist>\nnot now\n") << QByteArray("line 2, column ");
    QTest::newRow("a page") << QByteArray("<html><body>no configuration profiles</body></html>")
                            << QByteArray("line 1, column ");
}

void tst_PctProfileInstalled::whatIsNoListIsNotTakenForNoProfile()
{
    QFETCH(QByteArray, printed);
    QFETCH(QByteArray, cause);
    const ProfileRunner runner;
    TestFiles::write(runner.file(text("printed")), printed);
    runner.replaceTool(text("profiles"), "cat '" + runner.file(text("printed")).toUtf8() + "'");
    const PctResult result = runner.makeProfile(true, {text("--installed")});
    const QByteArray reason = "(the list that /usr/bin/profiles printed cannot be read: " + cause;
    QVERIFY2(result.isOneLineRefusal() && result.err.contains(reason), result.err.constData());
    QVERIFY(!QFile::exists(runner.output()));
}

void tst_PctProfileInstalled::whatSaysThatNoneIsInstalledIsNoFailure_data()
{
    QTest::addColumn<QByteArray>("printed");
    QTest::newRow("for the user") << QByteArray(
        "There are no configuration profiles installed for user 'jane'");
    QTest::newRow("for the system") << QByteArray(
        "There are no configuration profiles installed in the system domain");
    const QByteArray list(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n<dict/>\n</plist>\n");
    QTest::newRow("an empty list") << list;
    QTest::newRow("a sentence behind an empty list")
        << list + "There are no configuration profiles installed\n";
}

void tst_PctProfileInstalled::whatSaysThatNoneIsInstalledIsNoFailure()
{
    QFETCH(QByteArray, printed);
    const ProfileRunner runner;
    TestFiles::write(runner.file(text("printed")), printed);
    runner.replaceTool(text("profiles"), "cat '" + runner.file(text("printed")).toUtf8() + "'");
    const PctResult result = runner.makeProfile(true, {text("--installed")});
    QVERIFY2(result.isOneLineRefusal() && result.err.contains("no profile of the Pelix PDF Editor was found"),
             result.err.constData());
}

void tst_PctProfileInstalled::withoutAnInstalledProfileThereIsNoSource()
{
    const ProfileRunner runner;
    const PctResult none = runner.makeProfile(true, {text("--installed")});
    QVERIFY2(none.isOneLineRefusal() && none.err.contains("no profile of the Pelix PDF Editor"),
             none.err.constData());
    runner.install(madeProfile(runner, false));
    const PctResult ofTheReader = runner.makeProfile(true, {text("--installed")});
    QVERIFY2(ofTheReader.isOneLineRefusal(), ofTheReader.err.constData());
    QVERIFY(!QFile::exists(runner.output()));
    runner.removeTool(text("profiles"));
    const PctResult missing = runner.makeProfile(true, {text("--installed")});
    QVERIFY2(missing.isOneLineRefusal() && missing.err.contains("command was not found"),
             missing.err.constData());
}

QTEST_GUILESS_MAIN(tst_PctProfileInstalled)
#include "tst_PctProfileInstalled.moc"
