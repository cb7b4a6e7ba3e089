// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/ProfileRunner.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

namespace {

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

} // namespace

/// Which files `pct profile` takes and which it never touches.
class tst_PctProfilePaths : public QObject
{
    Q_OBJECT

private slots:
    void anExistingOutputIsReplacedOnlyWithForce();
    void filesOfOneRunAreDifferent_data();
    void filesOfOneRunAreDifferent();
    void whatIsNoPlaceForAFileIsRefused_data();
    void whatIsNoPlaceForAFileIsRefused();
};

void tst_PctProfilePaths::anExistingOutputIsReplacedOnlyWithForce()
{
    const ProfileRunner runner;
    TestFiles::write(runner.output(), "as it was");
    const PctResult refused = runner.makeProfile(true);
    QVERIFY2(refused.isOneLineRefusal() && refused.err.contains("--force"), refused.err.constData());
    QCOMPARE(TestFiles::read(runner.output()), QByteArray("as it was"));
    const QFile::Permissions mode = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther;
    QVERIFY(QFile::setPermissions(runner.output(), mode));
    QCOMPARE(runner.makeProfile(true, {text("--force")}).exitCode, 0);
    QCOMPARE(QFile::permissions(runner.output()) & 0x7077, mode);
    QCOMPARE(runner.propertyList(runner.output()).value(text("PayloadType")).toString(),
             text("Configuration"));
}

void tst_PctProfilePaths::filesOfOneRunAreDifferent_data()
{
    QTest::addColumn<QStringList>("more");
    QTest::newRow("configuration") << QStringList{text("--config"), text("out.mobileconfig")};
    QTest::newRow("source") << QStringList{text("--from"), text("out.mobileconfig")};
    QTest::newRow("source by another way")
        << QStringList{text("--from"), text("../files/./out.mobileconfig")};
    QTest::newRow("link to it") << QStringList{text("--from"), text("link")};
}

void tst_PctProfilePaths::filesOfOneRunAreDifferent()
{
    QFETCH(QStringList, more);
    const ProfileRunner runner;
    QCOMPARE(runner.makeProfile(true).exitCode, 0);
    QVERIFY(QFile::link(runner.output(), runner.file(text("link"))));
    const QByteArray before = TestFiles::read(runner.output());
    const PctResult result = runner.makeProfile(true, QStringList{text("--force")} + more);
    QVERIFY2(result.isOneLineRefusal() && result.err.contains("is both the "), result.err.constData());
    QVERIFY(TestFiles::read(runner.output()) == before);
}

void tst_PctProfilePaths::whatIsNoPlaceForAFileIsRefused_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("folder") << text("folder") << QByteArray("is a folder");
    QTest::newRow("folder that is missing") << text("missing/a") << QByteArray("its folder does not exist");
    QTest::newRow("link that leads nowhere") << text("dangling") << QByteArray("is a link");
    QTest::newRow("device") << text("/dev/null") << QByteArray("is not a regular file");
}

void tst_PctProfilePaths::whatIsNoPlaceForAFileIsRefused()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, message);
    const ProfileRunner runner;
    QVERIFY(QDir().mkdir(runner.file(text("folder"))));
    QVERIFY(QFile::link(runner.file(text("nowhere")), runner.file(text("dangling"))));
    const QStringList before = runner.files();
    const PctResult result = runner.run(
        {text("profile"), text("--product"), text("editor"), text("--force"), text("--output"), path});
    QVERIFY2(result.isOneLineRefusal() && result.err.contains(message), result.err.constData());
    QCOMPARE(runner.files(), before);
}

QTEST_GUILESS_MAIN(tst_PctProfilePaths)
#include "tst_PctProfilePaths.moc"
