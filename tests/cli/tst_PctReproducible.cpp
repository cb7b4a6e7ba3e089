// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/BuildCommand.h"
#include "tests/cli/PctRunner.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

#include <sys/stat.h>

namespace {

const QString variable = QStringLiteral("SOURCE_DATE_EPOCH");
constexpr qint64 sourceDate = 1700000000;

/// Settings of several kinds, among them elements with many attributes.
const QByteArray settings =
    "<Profstore><Preferences>"
    "<Preference Text='DefaultLaunchAttachmentPerms' Mode='1' BuiltInPermList='version:1|.exe:3'/>"
    "<Preference Text='iManage10loginMethod' UseOAuth2='1'/></Preferences>"
    "<Plugins><Plugin Text='Plugin' UnloadPluginArray='a.plugin;'/></Plugins>"
    "<Installation_Options><Installation_Option Disable='1' Text='SetAsDefaultViewer'/>"
    "</Installation_Options></Profstore>";

/// Times in a package are whole seconds: the next build falls into another one.
void waitForAnotherSecond()
{
    QTest::qSleep(1100);
}

/// A build in places of its own; empty when it fails.
QByteArray packageBuiltElsewhere(bool editor, const QString &date)
{
    PctRunner runner;
    if (!date.isNull())
        runner.setEnvironment(variable, date);
    BuildCommand build{editor,
                       runner.samplePackage(editor, QStringLiteral("vendor input.pkg")),
                       runner.file(QStringLiteral("custom.pkg")),
                       {}};
    const QByteArray root = editor ? "PelixPDFEditor" : "PelixPDFReader";
    build.more = QStringList{QStringLiteral("--config"), runner.document(root, settings)};
    const PctResult result = runner.run(build.arguments());
    return result.exitCode == 0 ? TestFiles::read(build.output) : QByteArray();
}

} // namespace

/// The same input and settings make the same bytes.
class tst_PctReproducible : public QObject
{
    Q_OBJECT

private slots:
    void twoBuildsAreTheSameBytes_data();
    void twoBuildsAreTheSameBytes();
    void theUmaskOfTheBuilderDoesNotMatter();
    void withoutADateTheTimesDiffer();
    void noTimeIsNewerThanTheDate();
    void theDocumentsAreTheSameBytesEvenWithoutADate();
    void aBadDateIsRefused_data();
    void aBadDateIsRefused();
};

void tst_PctReproducible::twoBuildsAreTheSameBytes_data()
{
    QTest::addColumn<bool>("editor");
    QTest::addColumn<qint64>("date");
    QTest::newRow("editor") << true << sourceDate;
    QTest::newRow("reader") << false << sourceDate;
    QTest::newRow("before the vendor's files") << true << qint64(0);
    QTest::newRow("just now") << true << QDateTime::currentSecsSinceEpoch();
}

void tst_PctReproducible::twoBuildsAreTheSameBytes()
{
    QFETCH(bool, editor);
    QFETCH(qint64, date);
    const QByteArray first = packageBuiltElsewhere(editor, QString::number(date));
    QVERIFY(!first.isEmpty());
    waitForAnotherSecond();
    QVERIFY(packageBuiltElsewhere(editor, QString::number(date)) == first);
}

void tst_PctReproducible::theUmaskOfTheBuilderDoesNotMatter()
{
    const QByteArray first = packageBuiltElsewhere(true, QString::number(sourceDate));
    const mode_t before = umask(077);
    const QByteArray second = packageBuiltElsewhere(true, QString::number(sourceDate));
    umask(before);
    QVERIFY(!first.isEmpty());
    QVERIFY(second == first);
}

/// So the comparison above sees a difference where there is one.
void tst_PctReproducible::withoutADateTheTimesDiffer()
{
    const QByteArray first = packageBuiltElsewhere(true, QString());
    waitForAnotherSecond();
    const QByteArray second = packageBuiltElsewhere(true, QString());
    QVERIFY(!first.isEmpty() && !second.isEmpty());
    QVERIFY(second != first);
}

void tst_PctReproducible::noTimeIsNewerThanTheDate()
{
    PctRunner runner;
    runner.setEnvironment(variable, QString::number(sourceDate));
    const BuildCommand build{true, runner.samplePackage(true), runner.file(QStringLiteral("custom.pkg")), {}};
    QCOMPARE(runner.run(build.arguments()).exitCode, 0);
    const ExpandedPackage package(build.output);
    for (const char *name : {"ProfStore.xml", "postinstall"}) {
        const QFileInfo file(package.scriptPath(QLatin1String(name)));
        QCOMPARE(file.lastModified().toSecsSinceEpoch(), sourceDate);
    }
}

void tst_PctReproducible::theDocumentsAreTheSameBytesEvenWithoutADate()
{
    PctRunner runner;
    const QString document = runner.document("PelixPDFEditor", settings);
    const QString input = runner.samplePackage(true);
    QByteArrayList kept;
    for (int i = 0; i < 3; ++i) {
        const QString path = runner.file(QStringLiteral("kept%1.xml").arg(i));
        const BuildCommand build{
            true, input, runner.file(QStringLiteral("custom%1.pkg").arg(i)),
            QStringList{QStringLiteral("--config"), document, QStringLiteral("--keep-config"), path}};
        QCOMPARE(runner.run(build.arguments()).exitCode, 0);
        kept += TestFiles::read(path);
    }
    QVERIFY(kept.first().contains("a.plugin"));
    QCOMPARE(kept.at(1), kept.at(0));
    QCOMPARE(kept.at(2), kept.at(0));
}

void tst_PctReproducible::aBadDateIsRefused_data()
{
    QTest::addColumn<QString>("date");
    for (const char *date :
         {"", "soon", "-1", "+1", " 1", "1.5", "0x10", "1700000000s", "99999999999999999999999999"})
        QTest::newRow(date) << QString::fromLatin1(date);
    QTest::newRow("tomorrow") << QString::number(QDateTime::currentSecsSinceEpoch() + 86400);
}

void tst_PctReproducible::aBadDateIsRefused()
{
    QFETCH(QString, date);
    PctRunner runner;
    runner.setEnvironment(variable, date);
    const QString output = runner.file(QStringLiteral("custom.pkg"));
    TestFiles::write(output, "old");
    const BuildCommand build{true, runner.samplePackage(true), output,
                             QStringList{QStringLiteral("--force")}};
    const PctResult result = runner.run(build.arguments());
    QVERIFY2(result.isOneLineRefusal(), result.err.constData());
    QVERIFY2(result.err.contains(QByteArray("SOURCE_DATE_EPOCH: \"" + date.toLatin1() + '"')),
             result.err.constData());
    QCOMPARE(TestFiles::read(output), QByteArrayLiteral("old"));
    QVERIFY(runner.temporaryLeftovers().isEmpty());
}

QTEST_GUILESS_MAIN(tst_PctReproducible)
#include "tst_PctReproducible.moc"
