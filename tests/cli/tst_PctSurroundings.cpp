// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/BuildCommand.h"
#include "tests/cli/PctRunner.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QStandardPaths>
#include <QtTest>

namespace {

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

/// The command lines that look into PKG, and that have nothing to say against a package that was made here.
const QVector<QPair<const char *, const char *>> packageLines = {
    {"check", "check --product editor in.pkg"},
    {"build", "build --product editor --input in.pkg --output out.pkg"},
    {"show", "show customized.pkg"},
};

void addLines()
{
    QTest::addColumn<QString>("line");
    for (const auto &line : packageLines)
        QTest::newRow(line.first) << text(line.second);
}

QStringList words(const QString &line)
{
    return line.split(QLatin1Char(' '));
}

/// Runs pct through another program, which gets the command line as its last arguments.
PctResult runThrough(const PctRunner &runner, QStringList starter, const QString &line)
{
    QProcess process;
    process.setProcessEnvironment(runner.environment());
    process.setWorkingDirectory(runner.file(QString()));
    const QString program = starter.takeFirst();
    process.start(program, starter + QStringList{text(PCT_EXECUTABLE)} + words(line));
    return PctRunner::waitFor(process);
}

PctResult runWithLimit(const PctRunner &runner, const QString &limit, const QString &line)
{
    return runThrough(runner, {text("/bin/sh"), text("-c"), text("ulimit %1; exec \"$0\" \"$@\"").arg(limit)},
                      line);
}

/// Runs pct where its temporary folder is a file system of that size.
PctResult runInFolderOfSize(const PctRunner &runner, const char *size, const QString &line)
{
    const QString mount =
        text("mount -t tmpfs -o size=%1 none \"$TMPDIR\" && exec \"$0\" \"$@\"").arg(text(size));
    return runThrough(runner, {text("unshare"), text("-rm"), text("/bin/sh"), text("-c"), mount}, line);
}

bool canMount()
{
    QProcess process;
    process.start(text("unshare"),
                  {text("-rm"), text("/bin/sh"), text("-c"), text("mount -t tmpfs none /mnt")});
    return process.waitForFinished(-1) && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

/// A folder with links to some of the system's programs and nothing else.
QString folderWith(const PctRunner &runner, const QStringList &programs)
{
    const QDir folder(runner.file(text("programs")));
    QDir().mkpath(folder.path());
    for (const QString &program : programs)
        QFile::link(QStandardPaths::findExecutable(program), folder.filePath(program));
    return folder.path();
}

} // namespace

/// What `pct` says when the machine, and not the package, is in the way.
class tst_PctSurroundings : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void aMissingPathIsTheSystemsOwn_data();
    void aMissingPathIsTheSystemsOwn();
    void aMissingProgramIsNamed_data();
    void aMissingProgramIsNamed();
    void aProgramThatDoesNotWorkIsNotThePackagesFault_data();
    void aProgramThatDoesNotWorkIsNotThePackagesFault();
    void aFullTemporaryFolderIsNamed_data();
    void aFullTemporaryFolderIsNamed();
    void aTemporaryFolderThatTakesNoFilesIsNamed_data();
    void aTemporaryFolderThatTakesNoFilesIsNamed();
    void aTemporaryFolderThatGetsFullIsNotThePackagesFault_data();
    void aTemporaryFolderThatGetsFullIsNotThePackagesFault();
    void tooFewOpenFilesAreNamed_data();
    void tooFewOpenFilesAreNamed();
    void tooFewOpenFilesAreInTheJson_data();
    void tooFewOpenFilesAreInTheJson();
    void openFilesAreAskedForWhereTheSystemAllowsThem_data();
    void openFilesAreAskedForWhereTheSystemAllowsThem();

private:
    void copyPackagesTo(const PctRunner &runner) const;

    PctRunner m_packages;
};

void tst_PctSurroundings::initTestCase()
{
    const BuildCommand build{
        true, m_packages.samplePackage(true, text("in.pkg")), m_packages.file(text("customized.pkg")), {}};
    const PctResult result = m_packages.run(build.arguments());
    QVERIFY2(result.exitCode == 0, result.err.constData());
}

void tst_PctSurroundings::copyPackagesTo(const PctRunner &runner) const
{
    for (const auto *name : {"in.pkg", "customized.pkg"})
        QVERIFY(QFile::copy(m_packages.file(text(name)), runner.file(text(name))));
}

void tst_PctSurroundings::aMissingPathIsTheSystemsOwn_data()
{
    addLines();
}

void tst_PctSurroundings::aMissingPathIsTheSystemsOwn()
{
    QFETCH(QString, line);
    const PctRunner runner;
    copyPackagesTo(runner);
    for (const auto *change : {"unset PATH", "PATH="}) {
        QFile::remove(runner.file(text("out.pkg")));
        const PctResult result = runThrough(
            runner, {text("/bin/sh"), text("-c"), text(change) + text("; exec \"$0\" \"$@\"")}, line);
        QVERIFY2(result.exitCode == 0, result.err.constData());
    }
}

void tst_PctSurroundings::aMissingProgramIsNamed_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QStringList>("programs");
    QTest::addColumn<QByteArray>("missing");
    for (const auto &line : packageLines) {
        QTest::addRow("%s without sh", line.first)
            << text(line.second) << QStringList{text("grep"), text("sed"), text("rm")} << QByteArray("sh");
        QTest::addRow("%s without grep", line.first)
            << text(line.second) << QStringList{text("sh"), text("sed"), text("rm")} << QByteArray("grep");
    }
}

void tst_PctSurroundings::aMissingProgramIsNamed()
{
    QFETCH(QString, line);
    QFETCH(QStringList, programs);
    QFETCH(QByteArray, missing);
    PctRunner runner;
    copyPackagesTo(runner);
    runner.setEnvironment(text("PATH"), folderWith(runner, programs));
    const PctResult result = runner.run(words(line));
    QVERIFY2(result.isOneLineRefusal(), result.err.constData());
    QVERIFY2(result.err.startsWith(QByteArray("pct: " + missing + ": this command was not found; ")),
             result.err.constData());
}

void tst_PctSurroundings::aProgramThatDoesNotWorkIsNotThePackagesFault_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("program");
    QTest::addColumn<QByteArray>("script");
    for (const auto &line : packageLines) {
        for (const auto *program : {"sh", "grep"}) {
            QTest::addRow("%s, %s fails", line.first, program)
                << text(line.second) << text(program) << QByteArray("exit 2");
            QTest::addRow("%s, %s complains", line.first, program)
                << text(line.second) << text(program) << QByteArray("echo 'out of order' >&2; exit 2");
        }
    }
}

void tst_PctSurroundings::aProgramThatDoesNotWorkIsNotThePackagesFault()
{
    QFETCH(QString, line);
    QFETCH(QString, program);
    QFETCH(QByteArray, script);
    PctRunner runner;
    copyPackagesTo(runner);
    const QString programs = runner.file(text("programs"));
    TestFiles::write(programs + QLatin1Char('/') + program, "#!/bin/bash\n" + script + '\n');
    QVERIFY(QFile::setPermissions(programs + QLatin1Char('/') + program, QFile::ReadOwner | QFile::ExeOwner));
    runner.setEnvironment(text("PATH"),
                          programs + QLatin1Char(':') + runner.environment().value(text("PATH")));
    const PctResult result = runner.run(words(line));
    QVERIFY2(result.isOneLineRefusal(), result.err.constData());
    QVERIFY2(result.err.contains("could not be checked ("), result.err.constData());
    QCOMPARE(result.err.contains("out of order"), script.contains("out of order"));
}

void tst_PctSurroundings::aFullTemporaryFolderIsNamed_data()
{
    addLines();
}

void tst_PctSurroundings::aFullTemporaryFolderIsNamed()
{
    QFETCH(QString, line);
    if (!canMount())
        QSKIP("no file system can be mounted here");
    const PctRunner runner;
    copyPackagesTo(runner);
    const PctResult result = runInFolderOfSize(runner, "32k", line);
    QVERIFY2(result.isOneLineRefusal(), result.err.constData());
    const QByteArray folder = runner.environment().value(text("TMPDIR")).toUtf8();
    QVERIFY2(result.err.startsWith(
                 QByteArray("pct: " + folder + ": nothing can be written there (No space left on device); ")),
             result.err.constData());
}

void tst_PctSurroundings::aTemporaryFolderThatTakesNoFilesIsNamed_data()
{
    addLines();
}

void tst_PctSurroundings::aTemporaryFolderThatTakesNoFilesIsNamed()
{
    QFETCH(QString, line);
    const PctRunner runner;
    copyPackagesTo(runner);
    const PctResult result = runWithLimit(runner, text("-f 0"), line);
    QVERIFY2(result.isOneLineRefusal(), result.err.constData());
    QVERIFY2(result.err.contains(": nothing can be written there (File too large); "),
             result.err.constData());
}

void tst_PctSurroundings::aTemporaryFolderThatGetsFullIsNotThePackagesFault_data()
{
    QTest::addColumn<QString>("line");
    QTest::newRow("check") << text("check --product editor changed.pkg");
    QTest::newRow("build") << text("build --product editor --input changed.pkg --output out.pkg");
    QTest::newRow("show") << text("show changed.pkg");
}

void tst_PctSurroundings::aTemporaryFolderThatGetsFullIsNotThePackagesFault()
{
    QFETCH(QString, line);
    if (!canMount())
        QSKIP("no file system can be mounted here");
    const PctRunner runner;
    runner.changedPackage(true, text("head -c 1000000 /dev/urandom > notes"));
    const PctResult result = runInFolderOfSize(runner, "500k", line);
    QVERIFY2(result.isOneLineRefusal(), result.err.constData());
    QVERIFY2(result.err.endsWith("; make room for it on this machine and run it again\n"),
             result.err.constData());
    QVERIFY2(result.err.contains("room"), result.err.constData());
}

void tst_PctSurroundings::tooFewOpenFilesAreNamed_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("files");
    for (const int files : {6, 12, 40}) {
        if (files < PCT_FEWEST_FILES)
            continue;
        for (const auto &line : packageLines)
            QTest::addRow("%s, %d", line.first, files) << text(line.second) << files;
        QTest::addRow("diff, %d", files) << text("diff customized.pkg customized.pkg") << files;
    }
}

void tst_PctSurroundings::tooFewOpenFilesAreNamed()
{
    QFETCH(QString, line);
    QFETCH(int, files);
    const PctRunner runner;
    copyPackagesTo(runner);
    const PctResult result = runWithLimit(runner, text("-n %1").arg(files), line);
    QCOMPARE(result.exitCode, line.startsWith(text("diff")) ? 2 : 1);
    QCOMPARE(QString::fromUtf8(result.err),
             text("pct: open files: only %1 may be open at a time; raise the limit, for example with "
                  "\"ulimit -n 64\"\n")
                 .arg(files));
    QCOMPARE(runner.temporaryLeftovers(), QStringList());
}

void tst_PctSurroundings::tooFewOpenFilesAreInTheJson_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("files");
    for (const int files : {5, 6, 7, 8, 12, 63}) {
        if (files < PCT_FEWEST_FILES)
            continue;
        for (const auto *line :
             {"check --product editor in.pkg", "build --product editor --input in.pkg --output out.pkg",
              "profile --product editor --output out.mobileconfig"})
            QTest::addRow("%.5s, %d", line, files) << text(line) + text(" --json") << files;
    }
}

void tst_PctSurroundings::tooFewOpenFilesAreInTheJson()
{
    QFETCH(QString, line);
    QFETCH(int, files);
    const PctRunner runner;
    copyPackagesTo(runner);
    const PctResult result = runWithLimit(runner, text("-n %1").arg(files), line);
    QCOMPARE(result.exitCode, 1);
    const QJsonObject problem = result.json().value(text("problem")).toObject();
    QCOMPARE(problem.value(text("file")).toString(), text("open files"));
    QCOMPARE("pct: open files: " + problem.value(text("text")).toString().toUtf8() + '\n', result.err);
}

void tst_PctSurroundings::openFilesAreAskedForWhereTheSystemAllowsThem_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("limit");
    for (const auto &line : packageLines) {
        QTest::addRow("%s, asked for", line.first) << text(line.second) << text("-S -n 6");
        QTest::addRow("%s, just enough", line.first) << text(line.second) << text("-n 64");
    }
}

void tst_PctSurroundings::openFilesAreAskedForWhereTheSystemAllowsThem()
{
    QFETCH(QString, line);
    QFETCH(QString, limit);
    const PctRunner runner;
    copyPackagesTo(runner);
    const PctResult result = runWithLimit(runner, limit, line);
    QVERIFY2(result.exitCode == 0, result.err.constData());
}

QTEST_GUILESS_MAIN(tst_PctSurroundings)
#include "tst_PctSurroundings.moc"
