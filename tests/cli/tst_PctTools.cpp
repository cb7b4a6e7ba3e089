// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/BuildCommand.h"
#include "tests/cli/PctRunner.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

namespace {

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

} // namespace

/// `pct build` when the commands that it starts do not do their part, and what it asks of them.
class tst_PctTools : public QObject
{
    Q_OBJECT

private slots:
    void aToolThatDoesNotWorkFailsTheBuild_data();
    void aToolThatDoesNotWorkFailsTheBuild();
    void aPlaceThatIsFullFailsTheBuild_data();
    void aPlaceThatIsFullFailsTheBuild();
    void aMissingToolIsNamed_data();
    void aMissingToolIsNamed();
    void aToolsLastWordsAreInTheMessage();
    void anExpansionThatMadeNothingFailsTheBuild();
    void aFlatteningThatMadeNothingFailsTheBuild();
    void theWorkFolderIsPrivateAndNamedAfterThePackage();
    void foldersThatTheirOwnerCannotChangeAreRemoved();
    void namesThatAreNoTextAreRemoved();
};

void tst_PctTools::aToolThatDoesNotWorkFailsTheBuild_data()
{
    QTest::addColumn<QString>("tool");
    QTest::addColumn<QByteArray>("script");
    const QByteArray noise = "echo one; echo two >&2; echo three >&2; ";
    for (const auto *tool : {"installer", "pkgutil", "sed", "xar", "ditto"}) {
        QTest::addRow("%s fails", tool) << text(tool) << noise + "exit 3";
        QTest::addRow("%s is killed", tool) << text(tool) << noise + "kill -9 $$";
    }
    QTest::newRow("flattening fails")
        << text("pkgutil") << QByteArray("[ \"$1\" = --expand ] && exec \"$real\" \"$@\"; exit 3");
    QTest::newRow("flattening is killed half-way")
        << text("pkgutil")
        << QByteArray("[ \"$1\" = --expand ] && exec \"$real\" \"$@\"; printf 'xar!' > \"$3\"; kill -9 $$");
    QTest::newRow("expanding is killed half-way")
        << text("pkgutil")
        << QByteArray("[ \"$1\" = --flatten ] && exec \"$real\" \"$@\"; \"$real\" \"$@\"; kill -9 $$");
}

void tst_PctTools::aToolThatDoesNotWorkFailsTheBuild()
{
    QFETCH(QString, tool);
    QFETCH(QByteArray, script);
    const PctRunner runner;
    runner.replaceTool(tool, script);
    const QString kept = runner.file(text("kept.xml"));
    const BuildCommand build{true,
                             runner.samplePackage(true),
                             runner.file(text("out.pkg")),
                             {text("--force"), text("--keep-config"), kept}};
    TestFiles::write(build.output, "as it was");
    TestFiles::write(kept, "as it was");
    const QStringList before = runner.files();
    const PctResult result = runner.run(build.arguments());
    QVERIFY2(result.isOneLineRefusal(), result.err.constData());
    QVERIFY2(result.err.contains(tool.toUtf8()), result.err.constData());
    QCOMPARE(TestFiles::read(build.output), QByteArray("as it was"));
    QCOMPARE(TestFiles::read(kept), QByteArray("as it was"));
    QCOMPARE(runner.files(), before);
    QCOMPARE(runner.temporaryLeftovers(), QStringList());
}

void tst_PctTools::aPlaceThatIsFullFailsTheBuild_data()
{
    QTest::addColumn<int>("largestFile"); // in units of 512 bytes
    QTest::newRow("no room for anything") << 0;
    QTest::newRow("no room to expand the package") << 16;
    QTest::newRow("no room to flatten it") << 30;
}

/// A limit on the size of files stands for a full disk: writing fails half-way.
void tst_PctTools::aPlaceThatIsFullFailsTheBuild()
{
    QFETCH(int, largestFile);
    const PctRunner runner;
    const BuildCommand build{
        true, runner.samplePackage(true), runner.file(text("out.pkg")), {text("--force")}};
    TestFiles::write(build.output, "as it was");
    QProcess shell;
    shell.setProcessEnvironment(runner.environment());
    shell.start(text("/bin/sh"),
                QStringList{text("-c"), text("ulimit -f %1; exec \"$0\" \"$@\"").arg(largestFile),
                            text(PCT_EXECUTABLE)} +
                    build.arguments());
    const PctResult result = PctRunner::waitFor(shell);
    QVERIFY2(result.isOneLineRefusal(), result.err.constData());
    QCOMPARE(TestFiles::read(build.output), QByteArray("as it was"));
    QCOMPARE(runner.files().size(), 2);
    QCOMPARE(runner.temporaryLeftovers(), QStringList());
}

void tst_PctTools::aMissingToolIsNamed_data()
{
    QTest::addColumn<QString>("tool");
    for (const auto *tool : {"installer", "pkgutil", "xar", "ditto"})
        QTest::newRow(tool) << text(tool);
}

void tst_PctTools::aMissingToolIsNamed()
{
    QFETCH(QString, tool);
    PctRunner runner;
    runner.removeTool(tool);
    runner.setEnvironment(text("PATH"), text("/nonexistent"));
    const BuildCommand build{true, runner.samplePackage(true), runner.file(text("out.pkg")), {}};
    const PctResult result = runner.run(build.arguments());
    QVERIFY2(result.isOneLineRefusal(), result.err.constData());
    QVERIFY2(result.err.startsWith(QByteArray("pct: " + tool.toUtf8() + ": this command was not found")),
             result.err.constData());
    QCOMPARE(runner.temporaryLeftovers(), QStringList());
}

void tst_PctTools::aToolsLastWordsAreInTheMessage()
{
    const PctRunner runner;
    runner.replaceTool(text("pkgutil"), "echo 'the disk is full' >&2; exit 1");
    const BuildCommand build{true, runner.samplePackage(true), runner.file(text("out.pkg")), {}};
    const PctResult result = runner.run(build.arguments());
    QVERIFY2(result.isOneLineRefusal(), result.err.constData());
    QVERIFY2(
        result.err.contains("cannot expand the package: pkgutil ended with exit code 1: the disk is full;"),
        result.err.constData());
}

void tst_PctTools::anExpansionThatMadeNothingFailsTheBuild()
{
    const PctRunner runner;
    runner.replaceTool(text("pkgutil"), "[ \"$1\" = --flatten ] && exec \"$real\" \"$@\"; mkdir \"$3\"");
    const BuildCommand build{true, runner.samplePackage(true), runner.file(text("out.pkg")), {}};
    const PctResult result = runner.run(build.arguments());
    QVERIFY2(result.isOneLineRefusal(), result.err.constData());
    QCOMPARE(runner.files().size(), 1);
}

void tst_PctTools::aFlatteningThatMadeNothingFailsTheBuild()
{
    const PctRunner runner;
    runner.replaceTool(text("pkgutil"), "[ \"$1\" = --expand ] && exec \"$real\" \"$@\"; exit 0");
    const BuildCommand build{true, runner.samplePackage(true), runner.file(text("out.pkg")), {}};
    const PctResult result = runner.run(build.arguments());
    QVERIFY2(result.isOneLineRefusal(), result.err.constData());
    QCOMPARE(runner.files().size(), 1);
}

void tst_PctTools::theWorkFolderIsPrivateAndNamedAfterThePackage()
{
    PctRunner runner;
    const QString notes = runner.file(text("notes"));
    runner.setEnvironment(text("NOTES"), notes);
    runner.replaceTool(text("pkgutil"),
                       "[ \"$1\" = --expand ] && { echo \"$3\"; ls -ld \"$TMPDIR\"/*; } > \"$NOTES\"\n"
                       "exec \"$real\" \"$@\"");
    const BuildCommand build{
        true, runner.samplePackage(true, text("A b.pkg")), runner.file(text("out.pkg")), {}};
    QCOMPARE(runner.run(build.arguments()).exitCode, 0);
    const QList<QByteArray> lines = TestFiles::read(notes).split('\n');
    QVERIFY2(lines.at(0).contains("/tmp/pct-") && lines.at(0).endsWith("/A b.pkg"), lines.at(0).constData());
    QVERIFY2(lines.at(1).startsWith("drwx------"), lines.at(1).constData());
}

void tst_PctTools::foldersThatTheirOwnerCannotChangeAreRemoved()
{
    const PctRunner runner;
    runner.replaceTool(text("pkgutil"), "[ \"$1\" = --expand ] || exec \"$real\" \"$@\"\n"
                                        "mkdir -p \"$3/deep/deeper\"; : > \"$3/deep/deeper/file\"\n"
                                        "chmod 0 \"$3/deep/deeper\"; chmod 0500 \"$3/deep\"; exit 1");
    const BuildCommand build{true, runner.samplePackage(true), runner.file(text("out.pkg")), {}};
    QVERIFY(runner.run(build.arguments()).isOneLineRefusal());
    QCOMPARE(runner.temporaryLeftovers(), QStringList());
}

void tst_PctTools::namesThatAreNoTextAreRemoved()
{
    const PctRunner runner;
    runner.replaceTool(text("pkgutil"), "[ \"$1\" = --expand ] || exec \"$real\" \"$@\"\n"
                                        "name=$(printf 'a\\377b'); mkdir -p \"$3/$name/$name\"\n"
                                        ": > \"$3/$name/$name/$name\"; : > \"$3/$name/file\"; exit 1");
    const BuildCommand build{true, runner.samplePackage(true), runner.file(text("out.pkg")), {}};
    QVERIFY(runner.run(build.arguments()).isOneLineRefusal());
    QCOMPARE(runner.temporaryLeftovers(), QStringList());
}

QTEST_GUILESS_MAIN(tst_PctTools)
#include "tst_PctTools.moc"
