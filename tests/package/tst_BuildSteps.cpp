// SPDX-License-Identifier: Apache-2.0
#include "config/EditorXmlData.h"
#include "tests/package/BuildFixture.h"
#include "tests/package/LogCapture.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <utility>

/// The steps of a build, with commands that do their work, fail or make something else.
class tst_BuildSteps : public QObject, private BuildFixture
{
    Q_OBJECT

private slots:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    void aBuildLeavesOnlyTheOutputAndTheTemporaryDocument()
    {
        QVERIFY(builds());
        QCOMPARE(TestFiles::read(m_plan.outputPackage), QByteArray("flat"));
        QCOMPARE(entriesOf("out"), QStringList({QStringLiteral("%1 put.pkg")}));
        QCOMPARE(entriesOf("tmp"), QStringList({QStringLiteral("ProfStore.xml")}));
        QCOMPARE(TestFiles::read(m_plan.inputPackage), QByteArray("input"));
        QVERIFY(m_report.warnings.isEmpty());
        QCOMPARE(m_report.productVersion, QStringLiteral("13.1.2"));
    }

    void thePackageIsFlattenedIntoAHiddenPrivateFolderBesideTheOutput()
    {
        m_tools->add(QStringLiteral("xar"), "[ \"$1\" != -t ] || { echo Pelix_PDF_Editor.pkg/Scripts; "
                                            "ls -ld \"${3%/*}\" > '" +
                                                QFile::encodeName(at("mode")) + "'; }\n");
        QVERIFY(builds());
        const QString staged = m_tools->calls(QStringLiteral("pkgutil")).last().last();
        QCOMPARE(QFileInfo(staged).fileName(), QStringLiteral("%1 put.pkg"));
        QCOMPARE(QFileInfo(QFileInfo(staged).path()).path(), at("out"));
        QVERIFY(QFileInfo(QFileInfo(staged).path()).fileName().startsWith(QLatin1Char('.')));
        QVERIFY(TestFiles::read(at("mode")).startsWith("drwx------"));
    }

    void theStepsAreTakenInTheirOrder()
    {
        LogCapture log;
        QList<bool> hadEdits;
        m_plan.collectSettings = [&] {
            hadEdits += !m_tools->calls(QStringLiteral("sed")).isEmpty();
            return PackageSettings{{}, true, true};
        };
        QVERIFY(builds());
        QCOMPARE(hadEdits, QList<bool>{false});
        QStringList expressions;
        for (const QStringList &call : m_tools->calls(QStringLiteral("sed")))
            expressions += call.at(2).left(8);
        QCOMPARE(expressions, QStringList({QStringLiteral("s/editor"), QStringLiteral("s/setdef"),
                                           QStringLiteral("s+plistV")}));
        QVERIFY(log.has(QStringLiteral("qsUnPkgFile_pkg: ") + m_plan.workFolder +
                        QStringLiteral("/Pelix_PDF_Editor.pkg")));
    }

    void aScriptThatFitsAndIsLostCountsForWhoInsists_data()
    {
        QTest::addColumn<bool>("insists");
        QTest::newRow("insists") << true;
        QTest::newRow("does not") << false;
    }

    void aScriptThatFitsAndIsLostCountsForWhoInsists()
    {
        QFETCH(bool, insists);
        m_plan.insistsOnScripts = insists;
        m_plan.collectSettings = [this] {
            const QString script =
                m_plan.workFolder + QStringLiteral("/Pelix_PDF_Editor.pkg/Scripts/preinstall");
            QFile::remove(script);
            QDir().mkdir(script);
            return PackageSettings();
        };
        QCOMPARE(builds(), !insists);
        QCOMPARE(QFileInfo::exists(m_plan.outputPackage), !insists);
        if (!insists)
            return;
        QCOMPARE(m_report.failedStep, QStringLiteral("adapt the install scripts"));
        QVERIFY2(m_report.problem.startsWith(QStringLiteral("preinstall: ")), qPrintable(m_report.problem));
    }

    void nothingIsAddedThatIsNotWanted()
    {
        m_plan.collectSettings = [] { return PackageSettings(); };
        QVERIFY(builds());
        QCOMPARE(m_tools->calls(QStringLiteral("sed")).size(), 1);
    }

    void theSettingsThatAreCollectedAreTheOnesInTheDocument()
    {
        m_plan.documentPath = at("kept.xml");
        PackageSettings settings;
        m_plan.collectSettings = [&] { return settings; };
        settings.document.bShowStartPage = false;
        QVERIFY(builds());
        const QByteArray withoutPage = TestFiles::read(at("kept.xml"));
        settings.document.bShowStartPage = true;
        QVERIFY(builds());
        QVERIFY(withoutPage != TestFiles::read(at("kept.xml")));
    }

    void theExpandedPackageIsForItsUserOnly()
    {
        changeAfterExpansion("chmod 0777 .");
        mode_t mode = 0;
        m_plan.collectSettings = [&] {
            struct stat status = {};
            if (::stat(QFile::encodeName(m_plan.workFolder).constData(), &status) == 0)
                mode = status.st_mode & 07777;
            return PackageSettings();
        };
        QVERIFY(builds());
        QCOMPARE(mode, mode_t(0700));
    }

    void aKeptDocumentThatWasThereStaysWhenTheBuildFails_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::newRow("no package") << QByteArray("exit 1");
        QTest::newRow("empty package") << QByteArray(": > \"$3\"");
        QTest::newRow("the document is gone") << QByteArray("rm out/kept.xml; exit 1");
    }

    void aKeptDocumentThatWasThereStaysWhenTheBuildFails()
    {
        QFETCH(QByteArray, script);
        keepADocument();
        flattenWith(QByteArray(script).replace("out/", QFile::encodeName(at("out/"))));
        struct stat before = {};
        QCOMPARE(::stat(m_document.constData(), &before), 0);
        QVERIFY(!builds());
        QCOMPARE(m_report.failedStep, QStringLiteral("flatten the package"));
        QCOMPARE(entriesOf("out"), QStringList{QStringLiteral("kept.xml")});
        QCOMPARE(TestFiles::read(m_plan.documentPath), QByteArray("from before"));
        struct stat after = {};
        QCOMPARE(::stat(m_document.constData(), &after), 0);
        QCOMPARE(after.st_ino, before.st_ino);
        QCOMPARE(after.st_mode, before.st_mode);
        QCOMPARE(after.st_mtime, before.st_mtime);
    }

    void aKeptDocumentThatWasThereIsReplacedWhenTheBuildSucceeds()
    {
        keepADocument();
        QVERIFY(builds());
        QVERIFY(TestFiles::read(m_plan.documentPath).contains("<PelixPDFEditor"));
        struct stat status = {};
        QCOMPARE(::stat(m_document.constData(), &status), 0);
        QCOMPARE(status.st_mode & 07777, mode_t(0640));
        QCOMPARE(entriesOf("out"), QStringList({QStringLiteral("%1 put.pkg"), QStringLiteral("kept.xml")}));
    }

    void anExpansionThatFailsFailsTheBuild_data()
    {
        QTest::addColumn<QByteArray>("pkgutil");
        QTest::addColumn<QString>("problem");
        QTest::newRow("exit code") << QByteArray("echo 'Could not open package' >&2; exit 1\n")
                                   << QStringLiteral(
                                          "pkgutil ended with exit code 1: Could not open package");
        QTest::newRow("half done") << QByteArray(
                                          "mkdir -p \"$3/Pelix_PDF_Editor.pkg/Scripts\"; "
                                          ": > \"$3/Pelix_PDF_Editor.pkg/Scripts/postinstall\"; exit 1\n")
                                   << QStringLiteral("pkgutil ended with exit code 1");
        QTest::newRow("killed") << QByteArray("kill -9 $$\n")
                                << QStringLiteral("pkgutil was ended by a signal");
    }

    void anExpansionThatFailsFailsTheBuild()
    {
        QFETCH(QByteArray, pkgutil);
        m_tools->add(QStringLiteral("pkgutil"), pkgutil);
        LogCapture log;
        QVERIFY(!builds());
        QTEST(m_report.problem, "problem");
        QVERIFY(log.has(QStringLiteral("ExpandPkg fail!")));
        QVERIFY(entriesOf("out").isEmpty());
        QVERIFY(!QFileInfo::exists(at("tmp/ProfStore.xml")));
    }

    void aMissingPkgutilFailsTheBuild()
    {
        m_tools = std::make_unique<FakeTools>();
        m_tools->hideOthers();
        QVERIFY(!builds());
        QCOMPARE(m_report.problem, QStringLiteral("pkgutil could not be started"));
    }

    void anExpandedPackageThatIsNotAsItShouldBeFailsTheBuild_data()
    {
        QTest::addColumn<QByteArray>("change");
        QTest::newRow("component missing") << QByteArray("rm -r Pelix_PDF_Editor.pkg");
        QTest::newRow("component is a link")
            << QByteArray("mv Pelix_PDF_Editor.pkg real; ln -s real Pelix_PDF_Editor.pkg");
        QTest::newRow("Scripts missing") << QByteArray("rm -r Pelix_PDF_Editor.pkg/Scripts");
        QTest::newRow("Scripts is a link")
            << QByteArray("mv Pelix_PDF_Editor.pkg/Scripts real; ln -s ../real Pelix_PDF_Editor.pkg/Scripts");
        QTest::newRow("Scripts behind a linked component of the same name")
            << QByteArray("mkdir outer; mv Pelix_PDF_Editor.pkg real; mkdir Pelix_PDF_Editor.pkg; "
                          "ln -s ../real Pelix_PDF_Editor.pkg/Pelix_PDF_Editor.pkg");
        QTest::newRow("postinstall missing") << QByteArray("rm Pelix_PDF_Editor.pkg/Scripts/postinstall");
        for (const char *script : {"postinstall", "preinstall"})
            QTest::newRow(script) << QByteArray("cd Pelix_PDF_Editor.pkg/Scripts; mv ") + script +
                                         " real; ln -s real " + script;
        QTest::newRow("preinstall is a folder")
            << QByteArray("cd Pelix_PDF_Editor.pkg/Scripts; rm preinstall; mkdir preinstall");
    }

    void anExpandedPackageThatIsNotAsItShouldBeFailsTheBuild()
    {
        QFETCH(QByteArray, change);
        changeAfterExpansion(change);
        bool collected = false;
        m_plan.collectSettings = [&collected] {
            collected = true;
            return PackageSettings();
        };
        QVERIFY(!builds());
        QCOMPARE(m_report.failedStep, QStringLiteral("inspect the expanded package"));
        QVERIFY(!m_report.problem.isEmpty());
        QVERIFY(!collected);
        QVERIFY(m_tools->calls(QStringLiteral("sed")).isEmpty());
    }

    void aPackageWithoutPreinstallIsBuiltWithAWarning()
    {
        changeAfterExpansion("rm Pelix_PDF_Editor.pkg/Scripts/preinstall");
        QVERIFY(builds());
        QCOMPARE(m_report.warnings.size(), 1);
        QCOMPARE(m_report.warnings.first().code, QStringLiteral("preinstall-unpatched"));
    }

    void scriptsThatCannotBePatchedAndMissingSwitchesAreWarnings()
    {
        m_tools->addPackageTools("#!/bin/sh\n", "#!/bin/sh\n");
        m_plan.collectSettings = [] { return PackageSettings{{}, true, true}; };
        QVERIFY(builds());
        QStringList codes;
        for (const BuildWarning &warning : std::as_const(m_report.warnings))
            codes += warning.code;
        QCOMPARE(
            codes,
            QStringList({QStringLiteral("document-switch-missing"), QStringLiteral("viewer-switch-missing"),
                         QStringLiteral("preference-list-missing"), QStringLiteral("preinstall-unpatched"),
                         QStringLiteral("postinstall-unpatched")}));
    }

    void aSignatureThatGetsLostIsAWarning()
    {
        m_tools->add(QStringLiteral("xar"),
                     "case $1 in\n"
                     "--dump-toc=*) echo '<xar><toc><signature/></toc></xar>' > \"${1#--dump-toc=}\" ;;\n"
                     "*) echo Pelix_PDF_Editor.pkg/Scripts ;;\n"
                     "esac\n");
        QVERIFY(builds());
        QCOMPARE(m_report.warnings.size(), 1);
        QCOMPARE(m_report.warnings.first().code, QStringLiteral("signature-dropped"));
    }

    void aPackageThatWasCustomizedBeforeFailsTheBuild()
    {
        changeAfterExpansion("echo old > Pelix_PDF_Editor.pkg/Scripts/ProfStore.xml");
        LogCapture log;
        QVERIFY(!builds());
        QCOMPARE(m_report.failedStep, QStringLiteral("add the configuration document"));
        QVERIFY(m_report.problem.contains(QStringLiteral("customized before")));
        QCOMPARE(log.lines().last(), QStringLiteral("EditorXmlConfigfileToPkg fail!"));
        QVERIFY(entriesOf("out").isEmpty());
    }

    void aTemporaryDocumentIsNeverWrittenThroughALinkOrIntoAPipe_data()
    {
        QTest::addColumn<bool>("isPipe");
        QTest::newRow("link") << false;
        QTest::newRow("pipe") << true;
    }

    void aTemporaryDocumentIsNeverWrittenThroughALinkOrIntoAPipe()
    {
        QFETCH(bool, isPipe);
        TestFiles::write(at("precious"), "precious");
        if (isPipe)
            QCOMPARE(::mkfifo(QFile::encodeName(at("tmp/ProfStore.xml")).constData(), 0600), 0);
        else
            QVERIFY(QFile::link(at("precious"), at("tmp/ProfStore.xml")));
        LogCapture log;
        QVERIFY(!builds());
        QCOMPARE(log.lines().last(), QStringLiteral("EditorXmlConfigfileToPkg fail!"));
        QCOMPARE(TestFiles::read(at("precious")), QByteArray("precious"));
    }

    void anAdditionThatFailsFailsTheBuildWithItsLine_data()
    {
        QTest::addColumn<QByteArray>("expression");
        QTest::addColumn<QString>("line");
        QTest::newRow("document") << QByteArray("s/editor*")
                                  << QStringLiteral("EditorXmlConfigfileToPkg fail!");
        QTest::newRow("viewer") << QByteArray("s/setdefaultpdf*") << QStringLiteral("SetDefaultPDF fail!");
        QTest::newRow("iManage") << QByteArray("s+plistValue*") << QStringLiteral("set iManageLogin fail!");
    }

    void anAdditionThatFailsFailsTheBuildWithItsLine()
    {
        QFETCH(QByteArray, expression);
        m_tools->add(QStringLiteral("sed"), "case $3 in " + expression + ") exit 1 ;; esac\n");
        m_plan.collectSettings = [] { return PackageSettings{{}, true, true}; };
        LogCapture log;
        QVERIFY(!builds());
        QTEST(log.lines().last(), "line");
        QVERIFY(entriesOf("out").isEmpty());
        QVERIFY(QFileInfo::exists(m_plan.workFolder));
    }

    void aFlatteningThatFailsLeavesNothingAndKeepsTheOldOutput_data()
    {
        QTest::addColumn<QByteArray>("pkgutil");
        QTest::addColumn<QByteArray>("xar");
        const QByteArray accept = "[ \"$1\" != -t ] || echo Pelix_PDF_Editor.pkg/Scripts\n";
        QTest::newRow("exit code") << QByteArray("exit 1") << accept;
        QTest::newRow("disk full") << QByteArray("printf half > \"$3\"; echo 'No space left' >&2; exit 1")
                                   << accept;
        QTest::newRow("killed") << QByteArray("printf half > \"$3\"; kill -9 $$") << accept;
        QTest::newRow("nothing made") << QByteArray("exit 0") << accept;
        QTest::newRow("empty file") << QByteArray(": > \"$3\"; exit 0") << accept;
        QTest::newRow("made a link") << QByteArray("ln -s /etc/passwd \"$3\"; exit 0") << accept;
        QTest::newRow("unreadable") << QByteArray("printf half > \"$3\"; exit 0") << QByteArray("exit 1\n");
        QTest::newRow("without scripts") << QByteArray("printf half > \"$3\"; exit 0")
                                         << QByteArray("echo Pelix_PDF_Editor.pkg/Scripts/more\n");
        QTest::newRow("other product") << QByteArray("printf half > \"$3\"; exit 0")
                                       << QByteArray("echo Pelix_PDF_Reader.pkg/Scripts\n");
    }

    void aFlatteningThatFailsLeavesNothingAndKeepsTheOldOutput()
    {
        QFETCH(QByteArray, pkgutil);
        QFETCH(QByteArray, xar);
        flattenWith(pkgutil);
        m_tools->add(QStringLiteral("xar"), xar);
        TestFiles::write(m_plan.outputPackage, "old output");
        LogCapture log;
        QVERIFY(!builds());
        QCOMPARE(log.lines().last(), QStringLiteral("FlattenUnPkg fail!"));
        QVERIFY(!m_report.problem.isEmpty());
        QCOMPARE(TestFiles::read(m_plan.outputPackage), QByteArray("old output"));
        QCOMPARE(entriesOf("out"), QStringList({QStringLiteral("%1 put.pkg")}));
    }

    void aLinkThatAppearsAtTheOutputIsNotWrittenThrough()
    {
        TestFiles::write(at("precious"), "precious");
        flattenWith("printf flat > \"$3\"; ln -s '" + QFile::encodeName(at("precious")) + "' '" +
                    QFile::encodeName(m_plan.outputPackage) + "'");
        QVERIFY(!builds());
        QVERIFY(m_report.problem.endsWith(QStringLiteral("is a link")));
        QCOMPARE(TestFiles::read(at("precious")), QByteArray("precious"));
    }

    void anOutputThatExistsIsReplaced()
    {
        TestFiles::write(m_plan.outputPackage, "old output");
        QVERIFY(builds());
        QCOMPARE(TestFiles::read(m_plan.outputPackage), QByteArray("flat"));
    }

private:
    /// A document from before, of a mode and a time of its own.
    void keepADocument()
    {
        m_plan.documentPath = at("out/kept.xml");
        m_document = QFile::encodeName(m_plan.documentPath);
        TestFiles::write(m_plan.documentPath, "from before");
        const timespec times[] = {{1000000000, 0}, {1000000000, 0}};
        QCOMPARE(::chmod(m_document.constData(), 0640), 0);
        QCOMPARE(::utimensat(AT_FDCWD, m_document.constData(), times, 0), 0);
    }

    QByteArray m_document;
};

QTEST_GUILESS_MAIN(tst_BuildSteps)
#include "tst_BuildSteps.moc"
