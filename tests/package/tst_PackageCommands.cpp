// SPDX-License-Identifier: Apache-2.0
#include "config/CCommon.h"
#include "package/FlatPackage.h"
#include "resources/Resources.h"
#include "tests/package/FakeTools.h"
#include "tests/package/LogCapture.h"
#include "tests/support/ProblemText.h"
#include "tests/support/TestFiles.h"

#include <QTemporaryDir>
#include <QtTest>

#include <memory>

/// Checking, expanding, flattening and reading the version.
class tst_PackageCommands : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initPctResources(); }

    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_tools = std::make_unique<FakeTools>();
        m_package = m_folder->filePath(QStringLiteral("the %1 installer.pkg"));
        TestFiles::write(m_package, "package");
    }

    void cleanup() { m_tools.reset(); }

    void aPackageIsCheckedByTheProductThatItsInfoNames_data()
    {
        QTest::addColumn<QByteArray>("info");
        QTest::addColumn<bool>("isEditor");
        QTest::addColumn<bool>("isReader");
        QTest::newRow("Editor") << QByteArray("Pelix PDF Editor") << true << false;
        QTest::newRow("Reader") << QByteArray("Pelix PDF Reader") << false << true;
        QTest::newRow("both") << QByteArray("first\nthe Pelix PDF Reader and\nPelix PDF Editor 13") << true
                              << true;
        QTest::newRow("other case") << QByteArray("pelix pdf editor pelix pdf reader") << false << false;
        QTest::newRow("nothing") << QByteArray() << false << false;
    }

    void aPackageIsCheckedByTheProductThatItsInfoNames()
    {
        QFETCH(QByteArray, info);
        m_tools->add(QStringLiteral("installer"), "cat <<'END'\n" + info + "\nEND\n");
        QTEST(CCommon::CheckPkg(m_package, true), "isEditor");
        QTEST(CCommon::CheckPkg(m_package, false), "isReader");
        QCOMPARE(m_tools->calls(QStringLiteral("installer")).value(0),
                 QStringList({QStringLiteral("-pkginfo"), QStringLiteral("-pkg"), m_package}));
    }

    void aFileThatIsNoPackageFailsTheCheckWhateverItsName()
    {
        const QString file = m_folder->filePath(QStringLiteral("Pelix PDF Editor.pkg"));
        TestFiles::write(file, "no package");
        m_tools->add(QStringLiteral("installer"), "echo \"installer: Error - $3\" >&2\nexit 1\n");
        QVERIFY(!CCommon::CheckPkg(file, true));
    }

    void aPathThatDoesNotExistFailsTheCheckWithoutRunningAnyTool()
    {
        m_tools->add(QStringLiteral("sh"), "exit 0\n");
        m_tools->add(QStringLiteral("installer"), "echo Pelix PDF Editor\n");
        QVERIFY(!CCommon::CheckPkg(m_folder->filePath(QStringLiteral("missing.pkg")), true));
        QVERIFY(!CCommon::CheckPkg(m_folder->path(), true));
        QVERIFY(m_tools->calls(QStringLiteral("sh")).isEmpty());
        QVERIFY(m_tools->calls(QStringLiteral("installer")).isEmpty());
    }

    void theCheckScriptRunsFromATemporaryCopyThatIsRemoved()
    {
        m_tools->add(QStringLiteral("sh"),
                     "cat \"$1\" > " + QFile::encodeName(m_folder->filePath(QStringLiteral("copy"))) + "\n");
        LogCapture log;
        QVERIFY(CCommon::CheckPkg(m_package, false));
        const QStringList call = m_tools->calls(QStringLiteral("sh")).value(0);
        QCOMPARE(call.mid(1), QStringList({m_package, QStringLiteral("reader")}));
        QVERIFY(!QFileInfo::exists(call.first()));
        QCOMPARE(TestFiles::read(m_folder->filePath(QStringLiteral("copy"))),
                 TestFiles::read(QStringLiteral(":/checkid")));
        QVERIFY(log.lines().first().startsWith(QStringLiteral("CheckPkgValid cmd:")));
    }

    void theCheckScriptLiesInAFolderOfItsOwnThatOnlyItsUserCanEnter()
    {
        const QString notes = m_folder->filePath(QStringLiteral("notes"));
        m_tools->add(QStringLiteral("sh"),
                     "folder=${1%/*}; { ls -ld \"$folder\"; ls -A \"$folder\"; ls -d \"${folder%/*}\"; } > " +
                         QFile::encodeName(notes) + "\n");
        QVERIFY(CCommon::CheckPkg(m_package, true));
        const QList<QByteArray> lines = TestFiles::read(notes).split('\n');
        const QString script = m_tools->calls(QStringLiteral("sh")).value(0).value(0);
        QVERIFY2(lines.value(0).startsWith("drwx------"), lines.value(0).constData());
        QCOMPARE(QString::fromUtf8(lines.value(1)), QFileInfo(script).fileName());
        QCOMPARE(QString::fromUtf8(lines.value(2)), QDir::tempPath());
        QVERIFY(!QFileInfo::exists(QFileInfo(script).path()));
    }

    void theCheckScriptIsABashScript()
    {
        QVERIFY(TestFiles::read(QStringLiteral(":/checkid")).startsWith("#!/bin/bash\n"));
    }

    void aMissingShellOrInstallerFailsTheCheck()
    {
        QVERIFY(!CCommon::CheckPkg(m_package, true));
        m_tools->hideOthers();
        QVERIFY(!CCommon::CheckPkg(m_package, true));
    }

    void aTemporaryFolderThatCannotBeWrittenFailsTheCheck()
    {
        if (!QFileInfo::exists(QStringLiteral("/proc/self")))
            QSKIP("only /proc is a folder that not even root can write");
        const QByteArray temporaryFolder = qgetenv("TMPDIR");
        m_tools->add(QStringLiteral("installer"), "echo Pelix PDF Editor\n");
        qputenv("TMPDIR", "/proc/self");
        LogCapture log;
        const bool valid = CCommon::CheckPkg(m_package, true);
        qputenv("TMPDIR", temporaryFolder);
        QVERIFY(!valid);
        QVERIFY(log.has(QStringLiteral("CheckPkg open tempfile fail")));
    }

    void expandingPassesBothPathsUnchanged()
    {
        m_tools->add(QStringLiteral("pkgutil"), "exit 0\n");
        const QString target = m_folder->filePath(QStringLiteral("%2 work folder"));
        LogCapture log;
        QCOMPARE(problemText(FlatPackage::expand(m_package, target)), QString());
        QCOMPARE(m_tools->calls(QStringLiteral("pkgutil")),
                 QList<QStringList>({{QStringLiteral("--expand"), m_package, target}}));
        QCOMPARE(log.lines(), QStringList({QStringLiteral("ExpandPkg qscmd:pkgutil --expand \"") + m_package +
                                               QStringLiteral("\" \"") + target + QStringLiteral("\""),
                                           QStringLiteral("finish ExpandPkg")}));
    }

    void expandingIntoAFolderThatExistsReportsSuccessAlthoughTheToolRefuses()
    {
        m_tools->add(QStringLiteral("pkgutil"), "[ ! -e \"$3\" ] || { echo 'File exists' >&2; exit 1; }\n");
        QCOMPARE(problemText(FlatPackage::expand(m_package, m_folder->path())),
                 QStringLiteral("pkgutil ended with exit code 1: File exists"));
        QVERIFY(CCommon::ExpandPkg(m_package, m_folder->path()));
    }

    void aPathWithAQuoteIsNotGivenToTheTool()
    {
        m_tools->add(QStringLiteral("pkgutil"), "exit 0\n");
        QVERIFY(CCommon::ExpandPkg(QStringLiteral("/tmp/a\" \"b.pkg"), m_folder->path()));
        QVERIFY(!problemText(FlatPackage::expand(QStringLiteral("/tmp/a\" \"b.pkg"), m_folder->path()))
                     .isEmpty());
        QVERIFY(!CCommon::FlattenUnPkg(m_folder->path(), QStringLiteral("/tmp/a\"b.pkg")));
        QVERIFY(m_tools->calls(QStringLiteral("pkgutil")).isEmpty());
    }

    void aToolThatIsMissingOrKilledIsTheCauseOfTheFailure()
    {
        m_tools->add(QStringLiteral("pkgutil"), "kill -9 $$\n");
        QCOMPARE(problemText(FlatPackage::flatten(m_folder->path(), m_package)),
                 QStringLiteral("pkgutil was ended by a signal"));
        m_tools = std::make_unique<FakeTools>();
        m_tools->hideOthers();
        QCOMPARE(problemText(FlatPackage::flatten(m_folder->path(), m_package)),
                 QStringLiteral("pkgutil could not be started"));
        QVERIFY(CCommon::ExpandPkg(m_package, m_folder->path()));
    }

    void flatteningSucceedsExactlyWhenTheToolDoes_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("succeeds");
        QTest::newRow("done") << QByteArray("exit 0\n") << true;
        QTest::newRow("failed") << QByteArray("exit 1\n") << false;
        QTest::newRow("disk full") << QByteArray("printf half > \"$3\"; echo 'No space left' >&2; exit 1\n")
                                   << false;
    }

    void flatteningSucceedsExactlyWhenTheToolDoes()
    {
        QFETCH(QByteArray, text);
        m_tools->add(QStringLiteral("pkgutil"), text);
        const QString output = m_folder->filePath(QStringLiteral("%1.pkg"));
        LogCapture log;
        QTEST(CCommon::FlattenUnPkg(m_folder->path(), output), "succeeds");
        QVERIFY(log.has(QStringLiteral("finish FlattenUnPkg")));
        QCOMPARE(m_tools->calls(QStringLiteral("pkgutil")),
                 QList<QStringList>({{QStringLiteral("--flatten"), m_folder->path(), output}}));
    }

    void theVersionIsReadFromPostinstall_data()
    {
        QTest::addColumn<QByteArray>("postinstall");
        QTest::addColumn<QString>("version");
        QTest::newRow("bigversion") << QByteArray("#\nbigversion=\"13.1.2\"\nnewVersion=9.9.9\n")
                                    << QStringLiteral("13.1.2");
        QTest::newRow("value runs to the end of the text")
            << QByteArray("#\nbigversion=13.1") << QStringLiteral("13.1");
        QTest::newRow("empty bigversion falls back")
            << QByteArray("#\nbigversion=\"\"\nnewVersion=12.1.3\n") << QStringLiteral("12.1");
        QTest::newRow("newVersion in quotes")
            << QByteArray("#\nnewVersion=\"13.0.1\"\n") << QStringLiteral("13.0");
        QTest::newRow("newVersion of a year")
            << QByteArray("#\nnewVersion=2024.1.0\n") << QStringLiteral("2024.1.0");
        QTest::newRow("newVersion of one digit")
            << QByteArray("#\nnewVersion=9.7.1\n") << QStringLiteral("9.");
        QTest::newRow("newVersion without a point")
            << QByteArray("#\nnewVersion=2024\n") << QStringLiteral("2024");
        QTest::newRow("newVersion that begins with a point")
            << QByteArray("#\nnewVersion=.5.1\n") << QStringLiteral(".5.1");
        QTest::newRow("bigversion at the start does not count")
            << QByteArray("bigversion=1.0\nnewVersion=13.0.1\n") << QStringLiteral("13.0");
        QTest::newRow("newVersion at the start does not count")
            << QByteArray("newVersion=13.0.1\n") << QString();
        QTest::newRow("other case") << QByteArray("#\nBigVersion=13\nnewversion=13\n") << QString();
        QTest::newRow("behind a NUL") << QByteArray("#\n\0bigversion=13\n", 16) << QString();
    }

    void theVersionIsReadFromPostinstall()
    {
        QFETCH(QByteArray, postinstall);
        TestFiles::write(m_folder->filePath(QStringLiteral("Scripts/postinstall")), postinstall);
        QTEST(CCommon::GetAppVersion(m_folder->path(), true), "version");
    }

    void scriptsAreFoundInTheComponentPackageOfTheProductToo()
    {
        TestFiles::write(m_folder->filePath(QStringLiteral("Pelix_PDF_Editor.pkg/Scripts/postinstall")),
                         "#\nbigversion=1.0\n");
        TestFiles::write(m_folder->filePath(QStringLiteral("Pelix_PDF_Reader.pkg/Scripts/postinstall")),
                         "#\nbigversion=2.0\n");
        QCOMPARE(CCommon::GetAppVersion(m_folder->path(), true), QStringLiteral("1.0"));
        LogCapture log;
        QCOMPARE(CCommon::GetAppVersion(m_folder->path(), false), QStringLiteral("2.0"));
        QCOMPARE(log.lines(), QStringList({QStringLiteral("qsTemp:") + m_folder->path() +
                                               QStringLiteral("/Pelix_PDF_Reader.pkg/Scripts/"),
                                           QStringLiteral("version: 2.0")}));
    }

    void aMissingOrLinkedPostinstallHasNoVersion()
    {
        QCOMPARE(CCommon::GetAppVersion(m_folder->path(), true), QString());
        const QString outside = m_folder->filePath(QStringLiteral("outside"));
        TestFiles::write(outside, "#\nbigversion=13.1\n");
        QVERIFY(QDir(m_folder->path()).mkpath(QStringLiteral("Scripts")));
        QVERIFY(QFile::link(outside, m_folder->filePath(QStringLiteral("Scripts/postinstall"))));
        QCOMPARE(CCommon::GetAppVersion(m_folder->path(), true), QString());
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<FakeTools> m_tools;
    QString m_package;
};

QTEST_GUILESS_MAIN(tst_PackageCommands)
#include "tst_PackageCommands.moc"
