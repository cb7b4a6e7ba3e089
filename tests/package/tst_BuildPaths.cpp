// SPDX-License-Identifier: Apache-2.0
#include "tests/package/BuildFixture.h"
#include "tests/package/LogCapture.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

/// Which paths a build refuses, and what it removes at the work folder's path.
class tst_BuildPaths : public QObject, private BuildFixture
{
    Q_OBJECT

private slots:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    void theWorkFolderHasTheNameOfTheInputWithItsBlanks()
    {
        QCOMPARE(m_plan.workFolder, at("tmp/in put.pkg"));
        QVERIFY(builds());
        QCOMPARE(m_tools->calls(QStringLiteral("pkgutil")).first(),
                 QStringList({QStringLiteral("--expand"), m_plan.inputPackage, m_plan.workFolder}));
    }

    void aLeftoverWorkFolderIsRemovedBeforeTheExpansion()
    {
        TestFiles::write(m_plan.workFolder + QStringLiteral("/Pelix_PDF_Editor.pkg/Scripts/ProfStore.xml"),
                         "old");
        QVERIFY(builds());
    }

    void somethingElseAtTheWorkFoldersPathFailsTheBuildAndStays_data()
    {
        QTest::addColumn<QString>("kind");
        for (const char *kind : {"file", "link to a folder", "dangling link", "pipe"})
            QTest::newRow(kind) << QString::fromLatin1(kind);
    }

    void somethingElseAtTheWorkFoldersPathFailsTheBuildAndStays()
    {
        QFETCH(QString, kind);
        TestFiles::write(at("precious/file"), "precious");
        if (kind == QLatin1String("file"))
            TestFiles::write(m_plan.workFolder, "precious");
        if (kind == QLatin1String("link to a folder"))
            QVERIFY(QFile::link(at("precious"), m_plan.workFolder));
        if (kind == QLatin1String("dangling link"))
            QVERIFY(QFile::link(at("nowhere"), m_plan.workFolder));
        if (kind == QLatin1String("pipe"))
            QCOMPARE(::mkfifo(QFile::encodeName(m_plan.workFolder).constData(), 0600), 0);
        LogCapture log;
        QVERIFY(!builds());
        QCOMPARE(log.lines(), QStringList({QStringLiteral("qsUnPkgFile exist and remove fail!")}));
        QCOMPARE(entriesOf("tmp"), QStringList({QStringLiteral("in put.pkg")}));
        QCOMPARE(TestFiles::read(at("precious/file")), QByteArray("precious"));
        QVERIFY(m_tools->calls(QStringLiteral("pkgutil")).isEmpty());
    }

    void anInputInTheTemporaryFolderIsNotRemovedAsTheWorkFolder()
    {
        TestFiles::write(at("tmp/in put.pkg"), "input");
        m_plan.inputPackage = at("tmp/in put.pkg");
        LogCapture log;
        QVERIFY(!builds());
        QVERIFY(log.has(QStringLiteral("qsUnPkgFile exist and remove fail!")));
        QCOMPARE(TestFiles::read(m_plan.inputPackage), QByteArray("input"));
    }

    void aFileOfTheBuildInTheWorkFolderIsNotRemovedWithIt_data()
    {
        QTest::addColumn<QString>("input");
        QTest::addColumn<QString>("output");
        QTest::addColumn<QString>("document");
        const QString inside = QStringLiteral("tmp/in put.pkg/in put.pkg");
        QTest::newRow("input") << inside << QStringLiteral("out/a.pkg") << QString();
        QTest::newRow("input through a link")
            << QStringLiteral("link/in put.pkg/in put.pkg") << QStringLiteral("out/a.pkg") << QString();
        QTest::newRow("output") << QStringLiteral("in put.pkg") << inside << QString();
        QTest::newRow("document") << QStringLiteral("in put.pkg") << QStringLiteral("out/a.pkg") << inside;
    }

    void aFileOfTheBuildInTheWorkFolderIsNotRemovedWithIt()
    {
        QFETCH(QString, input);
        QFETCH(QString, output);
        QFETCH(QString, document);
        TestFiles::write(at("tmp/in put.pkg/in put.pkg"), "precious");
        QVERIFY(QFile::link(at("tmp"), at("link")));
        m_plan.inputPackage = m_folder->filePath(input);
        m_plan.outputPackage = m_folder->filePath(output);
        m_plan.documentPath = document.isEmpty() ? QString() : m_folder->filePath(document);
        QVERIFY(!builds());
        QCOMPARE(m_report.failedStep, QStringLiteral("clear the work folder"));
        QCOMPARE(TestFiles::read(at("tmp/in put.pkg/in put.pkg")), QByteArray("precious"));
    }

    void aWorkFolderThatCannotBeRemovedFailsTheBuild()
    {
        QVERIFY(QDir().mkpath(m_plan.workFolder));
        LogCapture log;
        for (const char *rm : {"exit 1\n", "exit 0\n"}) {
            m_tools->add(QStringLiteral("rm"), rm);
            QVERIFY(!builds());
            QVERIFY(log.lines().last() == QStringLiteral("qsUnPkgFile exist and remove fail!"));
        }
        QCOMPARE(m_tools->calls(QStringLiteral("rm")).first(),
                 QStringList({QStringLiteral("-rf"), m_plan.workFolder}));
        QVERIFY(m_tools->calls(QStringLiteral("pkgutil")).isEmpty());
    }

    void aWorkFolderThatCannotBeRemovedAtTheEndIsOnlyWarnedAbout()
    {
        m_tools->add(QStringLiteral("rm"), "exit 1\n");
        LogCapture log;
        QVERIFY(builds());
        QCOMPARE(log.lines().last(), QStringLiteral("qsUnPkgFile remove fail!"));
        QCOMPARE(m_report.warnings.size(), 1);
        QCOMPARE(m_report.warnings.first().code, QStringLiteral("work-folder-left"));
        QVERIFY(QFileInfo::exists(m_plan.outputPackage));
    }

    void pathsThatBreakQuotingAreRefusedBeforeAnythingRuns_data()
    {
        QTest::addColumn<QString>("input");
        QTest::addColumn<QString>("output");
        QTest::addColumn<QString>("work");
        const QString quote = QStringLiteral("a\" \"b.pkg");
        const QString plain = QStringLiteral("plain.pkg");
        QTest::newRow("input") << quote << plain << plain;
        QTest::newRow("output") << plain << quote << plain;
        QTest::newRow("work folder") << plain << plain << quote;
    }

    void pathsThatBreakQuotingAreRefusedBeforeAnythingRuns()
    {
        QFETCH(QString, input);
        QFETCH(QString, output);
        QFETCH(QString, work);
        m_plan.inputPackage = m_folder->filePath(input);
        TestFiles::write(m_plan.inputPackage, "input");
        m_plan.outputPackage = at("out/") + output;
        m_plan.workFolder = at("tmp/") + work;
        TestFiles::write(m_plan.workFolder + QStringLiteral("/kept"), "kept");
        QVERIFY(!builds());
        QCOMPARE(m_report.failedStep, QStringLiteral("check the paths"));
        QVERIFY(m_report.problem.contains(QStringLiteral("double quote")));
        QVERIFY(m_tools->calls(QStringLiteral("pkgutil")).isEmpty());
        QVERIFY(QFileInfo::exists(m_plan.workFolder + QStringLiteral("/kept")));
    }

    void anInputThatIsNoFileIsRefused()
    {
        for (const QString &input : {at("missing.pkg"), at("out"), QString()}) {
            m_plan.inputPackage = input;
            QVERIFY(!builds());
            QCOMPARE(m_report.failedStep, QStringLiteral("check the paths"));
        }
        QVERIFY(QFileInfo::exists(at("tmp")));
    }

    void anOutputThatIsNoRegularFileIsRefused_data()
    {
        QTest::addColumn<QString>("output");
        QTest::addColumn<QString>("problem");
        QTest::newRow("link") << QStringLiteral("link") << QStringLiteral("is a link");
        QTest::newRow("dangling link") << QStringLiteral("dangling") << QStringLiteral("is a link");
        QTest::newRow("folder") << QStringLiteral("out") << QStringLiteral("is a folder");
        QTest::newRow("pipe") << QStringLiteral("pipe") << QStringLiteral("is not a regular file");
        QTest::newRow("device") << QStringLiteral("/dev/null") << QStringLiteral("is not a regular file");
        QTest::newRow("no folder") << QStringLiteral("missing/a.pkg")
                                   << QStringLiteral("its folder does not exist");
        QTest::newRow("below a file")
            << QStringLiteral("in put.pkg/a.pkg") << QStringLiteral("its folder does not exist");
    }

    void anOutputThatIsNoRegularFileIsRefused()
    {
        QFETCH(QString, output);
        QFETCH(QString, problem);
        TestFiles::write(at("file"), "precious");
        QVERIFY(QFile::link(at("file"), at("link")) && QFile::link(at("nowhere"), at("dangling")));
        QCOMPARE(::mkfifo(QFile::encodeName(at("pipe")).constData(), 0600), 0);
        m_plan.outputPackage = QDir(m_folder->path()).filePath(output);
        QVERIFY(!builds());
        QVERIFY2(m_report.problem.contains(problem), qPrintable(m_report.problem));
        QCOMPARE(TestFiles::read(at("file")), QByteArray("precious"));
        QVERIFY(m_tools->calls(QStringLiteral("pkgutil")).isEmpty());
    }

    void anOutputFolderThatCannotBeWrittenIsRefused()
    {
        if (::geteuid() == 0)
            QSKIP("root may write everywhere");
        QVERIFY(QFile::setPermissions(at("out"), QFile::ReadOwner | QFile::ExeOwner));
        QVERIFY(!builds());
        QVERIFY(m_report.problem.contains(QStringLiteral("cannot be written")));
        QVERIFY(m_tools->calls(QStringLiteral("pkgutil")).isEmpty());
    }

    void filesThatAreTheSameAreRefused_data()
    {
        QTest::addColumn<QString>("output");
        QTest::addColumn<QString>("document");
        QTest::newRow("output is the input") << QStringLiteral("in put.pkg") << QStringLiteral("doc.xml");
        QTest::newRow("output is the input by another path")
            << QStringLiteral("out/../in put.pkg") << QStringLiteral("doc.xml");
        QTest::newRow("output is the input by a linked folder")
            << QStringLiteral("here/in put.pkg") << QStringLiteral("doc.xml");
        QTest::newRow("output is a hard link of the input")
            << QStringLiteral("hard") << QStringLiteral("doc.xml");
        QTest::newRow("document is the input") << QStringLiteral("out/a.pkg") << QStringLiteral("in put.pkg");
        QTest::newRow("document is a hard link of the input")
            << QStringLiteral("out/a.pkg") << QStringLiteral("hard");
        QTest::newRow("document is the output, both missing")
            << QStringLiteral("out/a.pkg") << QStringLiteral("here/out/a.pkg");
        QTest::newRow("document is the output but for its case, both missing")
            << QStringLiteral("out/a.pkg") << QStringLiteral("out/A.PKG");
        QTest::newRow("output is the temporary document") << QStringLiteral("tmp/ProfStore.xml") << QString();
    }

    void filesThatAreTheSameAreRefused()
    {
        QFETCH(QString, output);
        QFETCH(QString, document);
        QVERIFY(QFile::link(m_folder->path(), at("here")));
        QCOMPARE(::link(QFile::encodeName(at("in put.pkg")).constData(),
                        QFile::encodeName(at("hard")).constData()),
                 0);
        m_plan.outputPackage = m_folder->filePath(output);
        m_plan.documentPath = document.isEmpty() ? QString() : m_folder->filePath(document);
        QVERIFY(!builds());
        QCOMPARE(m_report.failedStep, QStringLiteral("check the paths"));
        QCOMPARE(TestFiles::read(at("in put.pkg")), QByteArray("input"));
        QVERIFY(entriesOf("out").isEmpty() && entriesOf("tmp").isEmpty());
    }

    void aDocumentThatTurnsOutToBeTheOutputIsNotReplaced()
    {
        m_plan.documentPath = at("kept.xml");
        m_tools->add(QStringLiteral("xar"), "[ \"$1\" != -t ] || { echo Pelix_PDF_Editor.pkg/Scripts; ln '" +
                                                QFile::encodeName(at("kept.xml")) + "' '" +
                                                QFile::encodeName(m_plan.outputPackage) + "'; }\n");
        QVERIFY(!builds());
        QCOMPARE(m_report.failedStep, QStringLiteral("flatten the package"));
        QVERIFY(TestFiles::read(at("kept.xml")).startsWith("<?xml"));
        QCOMPARE(TestFiles::read(m_plan.outputPackage), TestFiles::read(at("kept.xml")));
    }

    void anOutputNameOfFullLengthIsPossible()
    {
        m_plan.outputPackage = at("out/") + QString(251, QLatin1Char('n')) + QStringLiteral(".pkg");
        QVERIFY(builds());
        QVERIFY(QFileInfo::exists(m_plan.outputPackage));
    }

    void relativePathsMeanTheCurrentFolder()
    {
        const QString current = QDir::currentPath();
        QVERIFY(QDir::setCurrent(m_folder->path()));
        m_plan.inputPackage = QStringLiteral("in put.pkg");
        m_plan.outputPackage = QStringLiteral("-out.pkg");
        m_plan.documentPath = QStringLiteral("kept.xml");
        const bool done = builds();
        QVERIFY(QDir::setCurrent(current));
        QVERIFY(done);
        QVERIFY(QFileInfo::exists(at("-out.pkg")) && QFileInfo::exists(at("kept.xml")));
    }
};

QTEST_GUILESS_MAIN(tst_BuildPaths)
#include "tst_BuildPaths.moc"
