// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/BuildCommand.h"
#include "tests/cli/PctRunner.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

namespace {

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

QByteArray encoded(const QString &path)
{
    return QFile::encodeName(path);
}

mode_t modeOf(const QString &path)
{
    struct stat status = {};
    return ::stat(encoded(path).constData(), &status) == 0 ? status.st_mode & 07777 : 0;
}

} // namespace

/// Which files `pct build` takes and which it never touches.
class tst_PctBuildPaths : public QObject
{
    Q_OBJECT

private slots:
    void anExistingOutputIsReplacedOnlyWithForce();
    void anExistingKeptDocumentIsReplacedOnlyWithForce();
    void filesOfOneRunAreDifferent_data();
    void filesOfOneRunAreDifferent();
    void whatIsNoPlaceForAFileIsRefused_data();
    void whatIsNoPlaceForAFileIsRefused();
    void aFolderThatCannotBeWrittenIsRefused();
    void aKeptDocumentOfARefusedBuildIsNotWritten();
    void relativePathsStartAtTheWorkingFolder();
    void unusualFileNamesWork_data();
    void unusualFileNamesWork();
    void anUnquotableFileNameIsRefused();
    void anInputInTheTemporaryFolderStays();
    void aMissingTemporaryFolderIsRefused();
    void aDocumentThatCannotBeKeptLeavesThePackage_data();
    void aDocumentThatCannotBeKeptLeavesThePackage();
};

void tst_PctBuildPaths::anExistingOutputIsReplacedOnlyWithForce()
{
    const PctRunner runner;
    BuildCommand build{true, runner.samplePackage(true), runner.file(text("out.pkg")), {}};
    TestFiles::write(build.output, "as it was");
    const PctResult refused = runner.run(build.arguments());
    QVERIFY2(refused.isOneLineRefusal() && refused.err.contains("--force"), refused.err.constData());
    QCOMPARE(TestFiles::read(build.output), QByteArray("as it was"));
    build.more = QStringList{text("--force")};
    QCOMPARE(::chmod(encoded(build.output).constData(), 0640), 0);
    QCOMPARE(runner.run(build.arguments()).exitCode, 0);
    QVERIFY(TestFiles::read(build.output).startsWith("xar!"));
    QCOMPARE(modeOf(build.output), mode_t(0640));
}

void tst_PctBuildPaths::anExistingKeptDocumentIsReplacedOnlyWithForce()
{
    const PctRunner runner;
    const QString kept = runner.file(text("kept.xml"));
    TestFiles::write(kept, "as it was");
    BuildCommand build{
        true, runner.samplePackage(true), runner.file(text("out.pkg")), {text("--keep-config"), kept}};
    const PctResult refused = runner.run(build.arguments());
    QVERIFY2(refused.isOneLineRefusal() && refused.err.contains("--force"), refused.err.constData());
    QCOMPARE(TestFiles::read(kept), QByteArray("as it was"));
    QVERIFY(!QFile::exists(build.output));
    build.more.append(text("--force"));
    QCOMPARE(::chmod(encoded(kept).constData(), 0604), 0);
    QCOMPARE(runner.run(build.arguments()).exitCode, 0);
    QVERIFY(TestFiles::read(kept).contains("<PelixPDFEditor "));
    QCOMPARE(modeOf(kept), mode_t(0604));
}

void tst_PctBuildPaths::filesOfOneRunAreDifferent_data()
{
    QTest::addColumn<QString>("output");
    QTest::addColumn<QString>("config");
    QTest::addColumn<QString>("kept");
    const QString new1 = text("new.pkg");
    const QString settings = text("settings.xml");
    QTest::newRow("output is input") << text("in.pkg") << settings << text("kept.xml");
    QTest::newRow("output is input by another way")
        << text("../files/./in.pkg") << settings << text("kept.xml");
    QTest::newRow("output is a hard link to input") << text("hard.pkg") << settings << text("kept.xml");
    QTest::newRow("output is a link to input") << text("link.pkg") << settings << text("kept.xml");
    QTest::newRow("output is input in a linked folder")
        << text("same/in.pkg") << settings << text("kept.xml");
    QTest::newRow("output is configuration") << settings << settings << text("kept.xml");
    QTest::newRow("kept is input") << new1 << settings << text("in.pkg");
    QTest::newRow("kept is a hard link to input") << new1 << settings << text("hard.pkg");
    QTest::newRow("kept is configuration") << new1 << settings << settings;
    QTest::newRow("kept is a link to configuration") << new1 << settings << text("link.xml");
    QTest::newRow("configuration is input") << new1 << text("in.pkg") << text("kept.xml");
    QTest::newRow("kept is output, not there yet") << new1 << settings << new1;
    QTest::newRow("kept is output, by another way") << new1 << settings << text("same/new.pkg");
    QTest::newRow("kept is output but for its case") << new1 << settings << text("New.PKG");
}

void tst_PctBuildPaths::filesOfOneRunAreDifferent()
{
    QFETCH(QString, output);
    QFETCH(QString, config);
    QFETCH(QString, kept);
    const PctRunner runner;
    const QString package = runner.samplePackage(true, text("in.pkg"));
    const QString settings = runner.document("PelixPDFEditor", "");
    QCOMPARE(::link(encoded(package).constData(), encoded(runner.file(text("hard.pkg"))).constData()), 0);
    QVERIFY(QFile::link(package, runner.file(text("link.pkg"))));
    QVERIFY(QFile::link(settings, runner.file(text("link.xml"))));
    QVERIFY(QFile::link(runner.file(QString()), runner.file(text("same"))));
    const QByteArray packageBytes = TestFiles::read(package);
    const QByteArray settingsBytes = TestFiles::read(settings);
    const QStringList before = runner.files();

    const BuildCommand build{true,
                             text("in.pkg"),
                             output,
                             {text("--force"), text("--config"), config, text("--keep-config"), kept}};
    const PctResult result = runner.run(build.arguments());
    QVERIFY2(result.isOneLineRefusal() && result.err.contains("is both the "), result.err.constData());
    QVERIFY(TestFiles::read(package) == packageBytes);
    QVERIFY(TestFiles::read(settings) == settingsBytes);
    QCOMPARE(runner.files(), before);
}

void tst_PctBuildPaths::whatIsNoPlaceForAFileIsRefused_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("folder") << text("folder") << QByteArray("is a folder");
    QTest::newRow("name that ends in a slash") << text("new/") << QByteArray("is a folder");
    QTest::newRow("this folder") << text(".") << QByteArray("is a folder");
    QTest::newRow("folder that is missing") << text("missing/a") << QByteArray("its folder does not exist");
    QTest::newRow("folder that is a file") << text("in.pkg/a") << QByteArray("its folder does not exist");
    QTest::newRow("link to a file") << text("link") << QByteArray("is a link");
    QTest::newRow("link that leads nowhere") << text("dangling") << QByteArray("is a link");
    QTest::newRow("pipe") << text("pipe") << QByteArray("is not a regular file");
    QTest::newRow("device") << text("/dev/null") << QByteArray("is not a regular file");
}

void tst_PctBuildPaths::whatIsNoPlaceForAFileIsRefused()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, message);
    const PctRunner runner;
    const QString package = runner.samplePackage(true, text("in.pkg"));
    QVERIFY(QDir().mkpath(runner.file(text("folder"))));
    TestFiles::write(runner.file(text("target")), "as it was");
    QVERIFY(QFile::link(runner.file(text("target")), runner.file(text("link"))));
    QVERIFY(QFile::link(runner.file(text("nowhere")), runner.file(text("dangling"))));
    QCOMPARE(::mkfifo(encoded(runner.file(text("pipe"))).constData(), 0600), 0);
    const QStringList before = runner.files();

    const QString elsewhere = runner.file(text("elsewhere"));
    const BuildCommand asOutput{true, package, path, {text("--force")}};
    const BuildCommand asKept{true, package, elsewhere, {text("--force"), text("--keep-config"), path}};
    for (const BuildCommand &build : {asOutput, asKept}) {
        const PctResult result = runner.run(build.arguments());
        QVERIFY2(result.isOneLineRefusal() && result.err.contains(message), result.err.constData());
        QCOMPARE(runner.files(), before);
    }
    QCOMPARE(TestFiles::read(runner.file(text("target"))), QByteArray("as it was"));
}

void tst_PctBuildPaths::aFolderThatCannotBeWrittenIsRefused()
{
    if (::geteuid() == 0)
        QSKIP("the superuser can write to every folder");
    const PctRunner runner;
    const QString folder = runner.file(text("folder"));
    QVERIFY(QDir().mkpath(folder));
    QVERIFY(QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner));
    const BuildCommand build{true, runner.samplePackage(true), folder + text("/out.pkg"), {}};
    const PctResult result = runner.run(build.arguments());
    QVERIFY2(result.isOneLineRefusal() && result.err.contains("cannot be written"), result.err.constData());
}

void tst_PctBuildPaths::aKeptDocumentOfARefusedBuildIsNotWritten()
{
    const PctRunner runner;
    const QString kept = runner.file(text("kept.xml"));
    TestFiles::write(kept, "as it was");
    const BuildCommand build{false,
                             runner.samplePackage(true),
                             runner.file(text("out.pkg")),
                             {text("--force"), text("--keep-config"), kept}};
    QVERIFY(runner.run(build.arguments()).isOneLineRefusal());
    QCOMPARE(TestFiles::read(kept), QByteArray("as it was"));
}

void tst_PctBuildPaths::relativePathsStartAtTheWorkingFolder()
{
    const PctRunner runner;
    runner.samplePackage(true, text("in.pkg"));
    runner.document("PelixPDFEditor", "", text("in.xml"));
    const BuildCommand build{
        true, text("in.pkg"), text("../files/out.pkg"), {text("--config"), text("in.xml")}};
    const PctResult result = runner.run(build.arguments());
    QVERIFY2(result.exitCode == 0, result.err.constData());
    QVERIFY(QFile::exists(runner.file(text("out.pkg"))));
}

void tst_PctBuildPaths::unusualFileNamesWork_data()
{
    QTest::addColumn<QString>("name");
    for (const auto *name :
         {"two  spaces.pkg", "%1.pkg", "%2 %1", "-q", "it's.pkg", "$(touch x).pkg", "a;b&c|d.pkg",
          "back\\slash.pkg", "line\nfeed.pkg", "Größe 設定.pkg", "ProfStore.xml", ".hidden"})
        QTest::newRow(name) << text(name);
}

void tst_PctBuildPaths::unusualFileNamesWork()
{
    QFETCH(QString, name);
    const PctRunner runner;
    const QString package = runner.samplePackage(true, name);
    const BuildCommand build{true, package, runner.file(text("out ") + name), {}};
    const PctResult result = runner.run(build.arguments());
    QVERIFY2(result.exitCode == 0, result.err.constData());
    QCOMPARE(ExpandedPackage(build.output).setting(text("name(/*)")), QByteArray("PelixPDFEditor"));
    QCOMPARE(runner.files().size(), 2);
    QCOMPARE(runner.temporaryLeftovers(), QStringList());
}

void tst_PctBuildPaths::anUnquotableFileNameIsRefused()
{
    const PctRunner runner;
    const QString package = runner.samplePackage(true, text("a\" \"b.pkg"));
    const BuildCommand build{true, package, runner.file(text("out.pkg")), {}};
    const PctResult result = runner.run(build.arguments());
    QVERIFY2(result.isOneLineRefusal(), result.err.constData());
    QCOMPARE(runner.files().size(), 1);
    QCOMPARE(runner.temporaryLeftovers(), QStringList());
}

void tst_PctBuildPaths::anInputInTheTemporaryFolderStays()
{
    PctRunner runner;
    runner.setEnvironment(text("TMPDIR"), runner.file(QString()));
    const BuildCommand build{true, runner.samplePackage(true), runner.file(text("out.pkg")), {}};
    const QByteArray input = TestFiles::read(build.input);
    QCOMPARE(runner.run(build.arguments()).exitCode, 0);
    QVERIFY(TestFiles::read(build.input) == input);
    QCOMPARE(runner.files().size(), 2);
}

void tst_PctBuildPaths::aMissingTemporaryFolderIsRefused()
{
    PctRunner runner;
    runner.setEnvironment(text("TMPDIR"), runner.file(text("missing")));
    const BuildCommand build{true, runner.samplePackage(true), runner.file(text("out.pkg")), {}};
    const PctResult result = runner.run(build.arguments());
    QVERIFY2(result.isOneLineRefusal() && result.err.contains("TMPDIR"), result.err.constData());
}

void tst_PctBuildPaths::aDocumentThatCannotBeKeptLeavesThePackage_data()
{
    QTest::addColumn<QByteArray>("duringTheBuild");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("a file appears") << QByteArray("echo > kept.xml") << QByteArray("exists already");
    QTest::newRow("a folder appears") << QByteArray("mkdir kept.xml") << QByteArray("exists already");
    QTest::newRow("a link appears") << QByteArray("ln -s a kept.xml") << QByteArray("exists already");
}

void tst_PctBuildPaths::aDocumentThatCannotBeKeptLeavesThePackage()
{
    QFETCH(QByteArray, duringTheBuild);
    QFETCH(QByteArray, message);
    const PctRunner runner;
    runner.replaceTool(text("pkgutil"),
                       "[ \"$1\" = --expand ] || { " + duringTheBuild + "; }\nexec \"$real\" \"$@\"");
    const QString kept = runner.file(text("kept.xml"));
    const BuildCommand build{
        true, runner.samplePackage(true), runner.file(text("out.pkg")), {text("--keep-config"), kept}};
    const PctResult result = runner.run(build.arguments());
    QVERIFY2(result.isOneLineRefusal(), result.err.constData());
    QVERIFY2(result.err.startsWith(
                 QByteArray("pct: " + kept.toUtf8() + ": the document cannot be kept (" + message)),
             result.err.constData());
    const QByteArray made = "; the package was made all the same, as " + build.output.toUtf8() + "\n";
    QVERIFY2(result.err.endsWith(made), result.err.constData());
    QCOMPARE(ExpandedPackage(build.output).setting(text("name(/*)")), QByteArray("PelixPDFEditor"));
}

QTEST_GUILESS_MAIN(tst_PctBuildPaths)
#include "tst_PctBuildPaths.moc"
