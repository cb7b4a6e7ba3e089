// SPDX-License-Identifier: Apache-2.0
#include "tests/hosttools/ToolRun.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

/// The macOS form of editing in place, and that everything else is the system's own sed.
class tst_SedInPlace : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void editsAFileAndKeepsItsModeAndOwner();
    void editsSeveralFiles();
    void editsFilesWithStrangeNames();
    void succeedsWhenNothingMatches();
    void leavesTheFileAsItWasWhenTheScriptIsWrong();
    void refusesWhatIsNoFile_data();
    void refusesWhatIsNoFile();
    void handsOtherUsesToTheSystemsSed_data();
    void handsOtherUsesToTheSystemsSed();
    void doesNotStartItself();
    void doesNotCallItselfThroughOthersForEver_data();
    void doesNotCallItselfThroughOthersForEver();
    void saysThatTheSystemHasNone();

private:
    QString at(const char *name) const { return m_folder->path() + QLatin1Char('/') + QLatin1String(name); }
    static ToolRun::Result edit(const QString &script, const QStringList &files)
    {
        return ToolRun::run(QStringLiteral("sed"),
                            QStringList({QStringLiteral("-i"), QString(), script}) + files);
    }

    QScopedPointer<QTemporaryDir> m_folder;
};

void tst_SedInPlace::init()
{
    m_folder.reset(new QTemporaryDir);
    TestFiles::write(at("file"), "switch=0\nother=0\n");
}

void tst_SedInPlace::editsAFileAndKeepsItsModeAndOwner()
{
    const QByteArray path = at("file").toUtf8();
    QCOMPARE(chmod(path.constData(), 0711), 0);
    if (geteuid() == 0)
        QCOMPARE(chown(path.constData(), 501, 20), 0);
    struct stat before = {};
    QCOMPARE(stat(path.constData(), &before), 0);
    const ToolRun::Result result = edit(QStringLiteral("s/switch=0/switch=1/"), {at("file")});
    QVERIFY2(result.exitCode == 0, result.errors.constData());
    QCOMPARE(TestFiles::read(at("file")), QByteArray("switch=1\nother=0\n"));
    struct stat after = {};
    QCOMPARE(stat(path.constData(), &after), 0);
    QCOMPARE(after.st_mode, before.st_mode);
    QCOMPARE(after.st_uid, before.st_uid);
    QCOMPARE(after.st_gid, before.st_gid);
    QCOMPARE(ToolRun::namesIn(m_folder->path()), QStringList({QStringLiteral("file")}));
}

void tst_SedInPlace::editsSeveralFiles()
{
    TestFiles::write(at("second"), "switch=0");
    QCOMPARE(edit(QStringLiteral("s/=0/=1/"), {at("file"), at("second")}).exitCode, 0);
    QCOMPARE(TestFiles::read(at("file")), QByteArray("switch=1\nother=1\n"));
    QCOMPARE(TestFiles::read(at("second")), QByteArray("switch=1"));
}

void tst_SedInPlace::editsFilesWithStrangeNames()
{
    for (const auto *name : {"-n", "with space", "%1", "\xc3\xa4"}) {
        TestFiles::write(m_folder->path() + QLatin1Char('/') + QString::fromUtf8(name), "a\n");
        const ToolRun::Result result =
            ToolRun::run(QStringLiteral("sed"),
                         {QStringLiteral("-i"), QString(), QStringLiteral("s/a/b/"), QString::fromUtf8(name)},
                         m_folder->path());
        QVERIFY2(result.exitCode == 0, result.errors.constData());
        QCOMPARE(TestFiles::read(m_folder->path() + QLatin1Char('/') + QString::fromUtf8(name)),
                 QByteArray("b\n"));
    }
}

void tst_SedInPlace::succeedsWhenNothingMatches()
{
    QCOMPARE(edit(QStringLiteral("s/missing/x/"), {at("file")}).exitCode, 0);
    QCOMPARE(TestFiles::read(at("file")), QByteArray("switch=0\nother=0\n"));
}

void tst_SedInPlace::leavesTheFileAsItWasWhenTheScriptIsWrong()
{
    const ToolRun::Result result = edit(QStringLiteral("s/unterminated"), {at("file")});
    QCOMPARE(result.exitCode, 1);
    QVERIFY(result.errors.contains("file: "));
    QCOMPARE(TestFiles::read(at("file")), QByteArray("switch=0\nother=0\n"));
    QCOMPARE(ToolRun::namesIn(m_folder->path()), QStringList({QStringLiteral("file")}));
}

void tst_SedInPlace::refusesWhatIsNoFile_data()
{
    QTest::addColumn<QString>("kind");
    for (const auto *kind : {"link", "folder", "pipe", "missing"})
        QTest::newRow(kind) << QString::fromLatin1(kind);
}

void tst_SedInPlace::refusesWhatIsNoFile()
{
    QFETCH(QString, kind);
    if (kind == QLatin1String("link"))
        QVERIFY(QFile::link(at("file"), at("target")));
    else if (kind == QLatin1String("folder"))
        QVERIFY(QDir().mkdir(at("target")));
    else if (kind == QLatin1String("pipe"))
        QCOMPARE(mkfifo(at("target").toUtf8().constData(), 0600), 0);
    const ToolRun::Result result = edit(QStringLiteral("s/0/1/"), {at("target")});
    QCOMPARE(result.exitCode, 1);
    QVERIFY(ToolRun::hasOneMessage(result, QStringLiteral("sed")));
    QCOMPARE(TestFiles::read(at("file")), QByteArray("switch=0\nother=0\n"));
    QCOMPARE(QFileInfo(at("target")).isSymLink(), kind == QLatin1String("link"));
}

void tst_SedInPlace::handsOtherUsesToTheSystemsSed_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("print a line") << QStringList(
        {QStringLiteral("-n"), QStringLiteral("1p"), QStringLiteral("file")});
    QTest::newRow("substitute") << QStringList({QStringLiteral("s/0/1/"), QStringLiteral("file")});
    QTest::newRow("a file that is missing") << QStringList({QStringLiteral("p"), QStringLiteral("missing")});
    QTest::newRow("quit with a code") << QStringList({QStringLiteral("q5"), QStringLiteral("file")});
}

void tst_SedInPlace::handsOtherUsesToTheSystemsSed()
{
    QFETCH(QStringList, arguments);
    const ToolRun::Result result = ToolRun::run(QStringLiteral("sed"), arguments, m_folder->path());
    QProcess system;
    system.setWorkingDirectory(m_folder->path());
    system.start(QStringLiteral("sed"), arguments);
    QVERIFY(system.waitForFinished());
    QCOMPARE(result.exitCode, system.exitCode());
    QCOMPARE(result.output, system.readAllStandardOutput());
}

void tst_SedInPlace::doesNotStartItself()
{
    // The folder of the stand-ins in front of PATH, by its own path and by a link to it.
    const QString folder = QFileInfo(ToolRun::path(QStringLiteral("sed"))).absolutePath();
    QVERIFY(QFile::link(folder, at("link")));
    const QString path = QStringLiteral("PATH=") + folder + QLatin1Char(':') + at("link") + QLatin1Char(':') +
                         qEnvironmentVariable("PATH");
    const ToolRun::Result result = ToolRun::run(
        QStringLiteral("sed"), {QStringLiteral("s/0/1/"), QStringLiteral("file")}, m_folder->path(), {path});
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.output, QByteArray("switch=1\nother=1\n"));
}

void tst_SedInPlace::doesNotCallItselfThroughOthersForEver_data()
{
    QTest::addColumn<bool>("isScript");
    QTest::addColumn<QString>("path");
    const QString wrapped = QStringLiteral("PATH=%1/wrapper:");
    QTest::newRow("a script that calls it") << true << QString(wrapped + qEnvironmentVariable("PATH"));
    QTest::newRow("a copy of it") << false << QString(wrapped + qEnvironmentVariable("PATH"));
    QTest::newRow("a script and nothing else") << true << QStringLiteral("PATH=%1/wrapper");
}

void tst_SedInPlace::doesNotCallItselfThroughOthersForEver()
{
    QFETCH(bool, isScript);
    QFETCH(QString, path);
    const QString sed = ToolRun::path(QStringLiteral("sed"));
    if (isScript)
        TestFiles::writeScript(at("wrapper/sed"), QByteArray("exec " + sed.toUtf8() + " \"$@\"\n"));
    else
        QVERIFY(QDir().mkdir(at("wrapper")) && QFile::copy(sed, at("wrapper/sed")));
    const bool isFound = path.contains(QStringLiteral("bin"));
    for (const QStringList &form : {QStringList(), QStringList({QStringLiteral("-i"), QString()})}) {
        const QStringList arguments = form + QStringList({QStringLiteral("s/0/1/"), QStringLiteral("file")});
        const ToolRun::Result result =
            ToolRun::run(QStringLiteral("sed"), arguments, m_folder->path(), {path.arg(m_folder->path())});
        QCOMPARE(result.exitCode, isFound ? 0 : 1);
        QVERIFY(isFound || result.errors.contains("the system has no sed"));
    }
    QCOMPARE(TestFiles::read(at("file")),
             isFound ? QByteArray("switch=1\nother=1\n") : QByteArray("switch=0\nother=0\n"));
}

void tst_SedInPlace::saysThatTheSystemHasNone()
{
    const ToolRun::Result result = ToolRun::run(QStringLiteral("sed"), {QStringLiteral("p")},
                                                m_folder->path(), {QStringLiteral("PATH=/nonexistent")});
    QCOMPARE(result.exitCode, 1);
    QVERIFY(ToolRun::hasOneMessage(result, QStringLiteral("sed")));
}

QTEST_GUILESS_MAIN(tst_SedInPlace)
#include "tst_SedInPlace.moc"
