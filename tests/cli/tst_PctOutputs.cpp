// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/BuildCommand.h"
#include "tests/cli/ProfileRunner.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

#include <array>
#include <sys/stat.h>

namespace {

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

/// Lets the package be flattened and then does something; $3 is where the package was made.
QByteArray afterFlattening(const QByteArray &command)
{
    return "\"$real\" \"$@\"; status=$?\n[ \"$1\" = --flatten ] || exit $status\n" + command +
           "\nexit $status\n";
}

/// Moves the folder $FROM away and puts a link to an exact copy of it in its place.
const QByteArray swapForALinkToACopy =
    "[ -L \"$FROM\" ] || { mv \"$FROM\" \"$FROM.moved\"; cp -Rp \"$FROM.moved\" \"$FROM.copy\"; "
    "ln -s \"$FROM.copy\" \"$FROM\"; (cd \"$FROM.copy\" && find . -exec cksum {} + > \"$NOTES\" 2> "
    "/dev/null); }";

QByteArray allIn(const QString &folder)
{
    return TestFiles::outputOf(
        text("sh"), {text("-c"), text("cd \"$0\" && find . -exec cksum {} + 2> /dev/null; :"), folder});
}

QStringList hiddenNames(const QString &folder)
{
    return QDir(folder).entryList({text(".*")}, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

} // namespace

/// What `pct` makes never takes the place of something that it was not meant to replace, and is made and
/// removed where the run began, wherever the paths lead by then.
class tst_PctOutputs : public QObject
{
    Q_OBJECT

private slots:
    void whatAppearsDuringABuildIsNotReplaced_data();
    void whatAppearsDuringABuildIsNotReplaced();
    void whatAppearsDuringASigningIsNotReplaced();
    void ofThreeBuildsToOnePathOneWins_data();
    void ofThreeBuildsToOnePathOneWins();
    void aFileSystemThatOnlyReplacesIsNamed();
    void replacingKeepsThePermissions();
    void anOutputFolderThatBecomesALinkLeadsNowhere();
    void aTemporaryFolderThatBecomesALinkLeadsNowhere();
    void aProfilesFolderThatBecomesALinkLeadsNowhere();
};

void tst_PctOutputs::whatAppearsDuringABuildIsNotReplaced_data()
{
    QTest::addColumn<QString>("appearing");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("output") << text("out.pkg")
                            << QByteArray("exists already, since this run began; use --force");
    QTest::newRow("kept document") << text("kept.xml") << QByteArray("the package was made");
}

void tst_PctOutputs::whatAppearsDuringABuildIsNotReplaced()
{
    QFETCH(QString, appearing);
    QFETCH(QByteArray, message);
    PctRunner runner;
    const QString path = runner.file(appearing);
    runner.setEnvironment(text("APPEARING"), path);
    runner.replaceTool(text("pkgutil"), afterFlattening("printf 'of another' > \"$APPEARING\""));
    const BuildCommand build{true,
                             runner.samplePackage(true),
                             runner.file(text("out.pkg")),
                             {text("--keep-config"), runner.file(text("kept.xml"))}};
    const PctResult result = runner.run(build.arguments());
    QVERIFY2(result.isOneLineRefusal() && result.err.contains(message), result.err.constData());
    QVERIFY2(result.err.contains("use --force"), result.err.constData());
    QVERIFY2(result.err.startsWith(QByteArray("pct: " + path.toUtf8() + ": ")), result.err.constData());
    QCOMPARE(TestFiles::read(path), QByteArray("of another"));
    QCOMPARE(hiddenNames(runner.file(QString())), QStringList());
}

void tst_PctOutputs::whatAppearsDuringASigningIsNotReplaced()
{
    ProfileRunner runner;
    runner.addIdentity(text("Pelix Deployment"));
    runner.setEnvironment(text("APPEARING"), runner.output());
    runner.replaceTool(text("security"), "printf 'of another' > \"$APPEARING\"; exec \"$real\" \"$@\"");
    const PctResult result = runner.makeProfile(true, {text("--sign"), text("Pelix Deployment")});
    QVERIFY2(result.isOneLineRefusal() && result.err.contains("use --force"), result.err.constData());
    QCOMPARE(TestFiles::read(runner.output()), QByteArray("of another"));
    QCOMPARE(runner.files().size(), 1);
}

void tst_PctOutputs::ofThreeBuildsToOnePathOneWins_data()
{
    QTest::addColumn<QString>("without");
    QTest::newRow("a rename that refuses") << QString();
    QTest::newRow("a file system where only a link refuses") << text("renameat2");
}

/// Each waits after flattening until the others have got as far.
void tst_PctOutputs::ofThreeBuildsToOnePathOneWins()
{
    QFETCH(QString, without);
    PctRunner runner;
    const QString meeting = runner.file(text("meeting"));
    QVERIFY(QDir().mkpath(meeting));
    runner.setEnvironment(text("MEETING"), meeting);
    runner.withoutCalls(without);
    runner.replaceTool(text("pkgutil"), afterFlattening(": > \"$MEETING/$$\"\n"
                                                        "while [ \"$(ls \"$MEETING\" | wc -l)\" -lt 3 ]; do "
                                                        "sleep 0.01; done"));
    const BuildCommand build{true, runner.samplePackage(true), runner.file(text("out.pkg")), {}};
    std::array<QProcess, 3> builds;
    for (QProcess &process : builds)
        runner.start(process, build.arguments());
    int winners = 0;
    for (QProcess &process : builds) {
        const PctResult result = PctRunner::waitFor(process);
        winners += result.exitCode == 0 ? 1 : 0;
        QVERIFY2(result.exitCode == 0 || (result.isOneLineRefusal() &&
                                          result.err.contains("out.pkg: exists already, since this run")),
                 result.err.constData());
    }
    QCOMPARE(winners, 1);
    QCOMPARE(ExpandedPackage(build.output).setting(text("name(/*)")), QByteArray("PelixPDFEditor"));
    QCOMPARE(hiddenNames(runner.file(QString())), QStringList());
    QCOMPARE(runner.temporaryLeftovers(), QStringList());
}

void tst_PctOutputs::aFileSystemThatOnlyReplacesIsNamed()
{
    ProfileRunner runner;
    runner.withoutCalls(text("renameat2 linkat"));
    const PctResult refused = runner.makeProfile(true);
    QVERIFY2(refused.isOneLineRefusal() && refused.err.contains("its file system"), refused.err.constData());
    QCOMPARE(runner.files(), QStringList());
    QCOMPARE(runner.makeProfile(true, {text("--force")}).exitCode, 0);
    QVERIFY(QFile::exists(runner.output()));
}

void tst_PctOutputs::replacingKeepsThePermissions()
{
    const PctRunner runner;
    const QString kept = runner.file(text("kept.xml"));
    const BuildCommand build{true,
                             runner.samplePackage(true),
                             runner.file(text("out.pkg")),
                             {text("--force"), text("--keep-config"), kept}};
    for (const QString &path : {build.output, kept}) {
        TestFiles::write(path, "as it was");
        QCOMPARE(::chmod(QFile::encodeName(path).constData(), 0640), 0);
    }
    QCOMPARE(runner.run(build.arguments()).exitCode, 0);
    for (const QString &path : {build.output, kept})
        QCOMPARE(TestFiles::outputOf(text("ls"), {text("-l"), path}).left(10), QByteArray("-rw-r-----"));
}

void tst_PctOutputs::anOutputFolderThatBecomesALinkLeadsNowhere()
{
    PctRunner runner;
    const QString folder = runner.file(text("place"));
    QVERIFY(QDir().mkpath(folder));
    TestFiles::write(folder + text("/out.pkg"), "as it was");
    runner.setEnvironment(text("FROM"), folder);
    runner.setEnvironment(text("NOTES"), runner.file(text("notes")));
    runner.replaceTool(text("pkgutil"), afterFlattening(swapForALinkToACopy));
    const BuildCommand build{true, runner.samplePackage(true), folder + text("/out.pkg"), {text("--force")}};
    const PctResult result = runner.run(build.arguments());
    QVERIFY2(result.isOneLineRefusal() && result.err.contains("moved or replaced"), result.err.constData());
    QCOMPARE(allIn(folder + text(".copy")), TestFiles::read(runner.file(text("notes"))));
    QCOMPARE(TestFiles::read(folder + text(".moved/out.pkg")), QByteArray("as it was"));
    QCOMPARE(hiddenNames(folder + text(".moved")), QStringList());
    QCOMPARE(hiddenNames(folder + text(".copy")).size(), 1);
}

void tst_PctOutputs::aTemporaryFolderThatBecomesALinkLeadsNowhere()
{
    PctRunner runner;
    const QString folder = runner.file(text("place"));
    QVERIFY(QDir().mkpath(folder));
    runner.setEnvironment(text("TMPDIR"), folder);
    runner.setEnvironment(text("FROM"), folder);
    runner.setEnvironment(text("NOTES"), runner.file(text("notes")));
    runner.replaceTool(text("pkgutil"), afterFlattening(swapForALinkToACopy));
    const BuildCommand build{true, runner.samplePackage(true), runner.file(text("out.pkg")), {}};
    QCOMPARE(runner.run(build.arguments()).exitCode, 0);
    QVERIFY(TestFiles::read(runner.file(text("notes"))).contains("postinstall"));
    QCOMPARE(allIn(folder + text(".copy")), TestFiles::read(runner.file(text("notes"))));
    QCOMPARE(QDir(folder + text(".moved")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList());
}

void tst_PctOutputs::aProfilesFolderThatBecomesALinkLeadsNowhere()
{
    ProfileRunner runner;
    runner.addIdentity(text("Pelix Deployment"));
    const QString folder = runner.file(text("place"));
    QVERIFY(QDir().mkpath(folder));
    runner.setEnvironment(text("FROM"), folder);
    runner.setEnvironment(text("NOTES"), runner.file(text("notes")));
    runner.replaceTool(text("security"), swapForALinkToACopy + "\nexec \"$real\" \"$@\"");
    const PctResult result =
        runner.run({text("profile"), text("--product"), text("editor"), text("--output"),
                    folder + text("/out.mobileconfig"), text("--sign"), text("Pelix Deployment")});
    QVERIFY2(result.isOneLineRefusal() && result.err.contains("moved or replaced"), result.err.constData());
    for (const auto *name : {".copy", ".moved"})
        QCOMPARE(QDir(folder + text(name)).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 QStringList());
}

QTEST_GUILESS_MAIN(tst_PctOutputs)
#include "tst_PctOutputs.moc"
