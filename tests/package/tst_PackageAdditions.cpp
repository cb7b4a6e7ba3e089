// SPDX-License-Identifier: Apache-2.0
#include "config/CCommon.h"
#include "config/EditorXmlData.h"
#include "config/Product.h"
#include "package/ExpandedPackage.h"
#include "resources/Resources.h"
#include "tests/package/FakeTools.h"
#include "tests/package/LogCapture.h"
#include "tests/package/VendorScripts.h"
#include "tests/support/ProblemText.h"
#include "tests/support/TestFiles.h"

#include <QTemporaryDir>
#include <QtTest>

#include <memory>
#include <sys/stat.h>
#include <unistd.h>

class tst_PackageAdditions : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initPctResources(); }

    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_tools = std::make_unique<FakeTools>();
        m_tools->addSed();
        m_component = m_folder->filePath(QStringLiteral("work folder/Pelix_PDF_Editor.pkg"));
        m_document = m_folder->filePath(QStringLiteral("document.xml"));
        TestFiles::write(scripts("postinstall"), VendorScripts::postinstall());
        TestFiles::write(m_document, "<document/>");
    }

    void cleanup() { m_tools.reset(); }

    void addingADocumentCopiesItAndSwitchesItOn()
    {
        QVERIFY(CCommon::EditorXmlAddfileToPkg(m_document, m_component, true));
        QCOMPARE(TestFiles::read(scripts("ProfStore.xml")), QByteArray("<document/>"));
        QCOMPARE(TestFiles::read(scripts("postinstall")),
                 VendorScripts::postinstall().replace("editorXmlFileCopy=0", "editorXmlFileCopy=1"));
    }

    void sedGetsExactlyItsFourArguments()
    {
        QVERIFY(CCommon::EditorXmlAddfileToPkg(m_document, m_component, true));
        QVERIFY(CCommon::SetDefaultPDF(m_component));
        QVERIFY(addIManageEntry());
        const QStringList expressions = {QStringLiteral("s/editorXmlFileCopy=0/editorXmlFileCopy=1/g"),
                                         QStringLiteral("s/setdefaultpdf=0/setdefaultpdf=1/g"),
                                         QStringLiteral("s+plistValue=\"+plistValue=\"iManage10/loginMethod/"
                                                        "UseOAuth2:1;+")};
        const QList<QStringList> calls = m_tools->calls(QStringLiteral("sed"));
        QCOMPARE(calls.size(), expressions.size());
        for (int i = 0; i < calls.size(); ++i)
            QCOMPARE(calls.at(i), QStringList({QStringLiteral("-i"), QString(), expressions.at(i),
                                               scripts("postinstall")}));
    }

    void aPostinstallWithoutTheSwitchIsNoFailureAndStaysAsItIs()
    {
        TestFiles::write(scripts("postinstall"), "#!/bin/bash\n");
        QVERIFY(CCommon::EditorXmlAddfileToPkg(m_document, m_component, true));
        QVERIFY(CCommon::SetDefaultPDF(m_component));
        QVERIFY(addIManageEntry());
        QCOMPARE(TestFiles::read(scripts("postinstall")), QByteArray("#!/bin/bash\n"));
    }

    void aDocumentThatIsThereAlreadyFailsTheAddition()
    {
        TestFiles::write(scripts("ProfStore.xml"), "<old/>");
        LogCapture log;
        QVERIFY(problemText(addDocument()).contains(QStringLiteral("customized before")));
        QVERIFY(log.has(QStringLiteral("CCommon::EditorXmlAddfileToPkg: copy xml file fail!")));
        QCOMPARE(TestFiles::read(scripts("ProfStore.xml")), QByteArray("<old/>"));
        QCOMPARE(TestFiles::read(scripts("postinstall")), VendorScripts::postinstall());
        QVERIFY(!CCommon::EditorXmlAddfileToPkg(m_document, m_component, true));
    }

    void aDanglingLinkInThePlaceOfTheDocumentIsNotWrittenThrough()
    {
        const QString outside = m_folder->filePath(QStringLiteral("outside"));
        QVERIFY(QFile::link(outside, scripts("ProfStore.xml")));
        QVERIFY(!CCommon::EditorXmlAddfileToPkg(m_document, m_component, true));
        QVERIFY(!QFileInfo::exists(outside));
    }

    void scriptsThatAreALinkAreNotTouched()
    {
        const QString outside = m_folder->filePath(QStringLiteral("outside"));
        QVERIFY(QFile::rename(m_component + QStringLiteral("/Scripts"), outside));
        QVERIFY(QFile::link(outside, m_component + QStringLiteral("/Scripts")));
        QVERIFY(problemText(addDocument()).contains(QStringLiteral("is not a folder")));
        QVERIFY(!CCommon::SetDefaultPDF(m_component));
        QVERIFY(!addIManageEntry());
        QVERIFY(!CCommon::AddFileToPkg(m_document, m_folder->filePath(QStringLiteral("work folder")), true));
        QCOMPARE(QDir(outside).entryList(QDir::Files), QStringList({QStringLiteral("postinstall")}));
        QVERIFY(m_tools->calls(QStringLiteral("sed")).isEmpty());
    }

    void aPostinstallThatIsALinkIsNotEdited()
    {
        const QString outside = m_folder->filePath(QStringLiteral("outside"));
        QVERIFY(QFile::rename(scripts("postinstall"), outside));
        QVERIFY(QFile::link(outside, scripts("postinstall")));
        QVERIFY(!addIManageEntry());
        QVERIFY(!CCommon::SetDefaultPDF(m_component));
        QVERIFY(m_tools->calls(QStringLiteral("sed")).isEmpty());
        QCOMPARE(TestFiles::read(outside), VendorScripts::postinstall());
    }

    void aMissingPostinstallFailsEveryAddition()
    {
        QVERIFY(QFile::remove(scripts("postinstall")));
        QVERIFY(problemText(addIManageEntry()).contains(QStringLiteral("postinstall")));
        QVERIFY(!CCommon::SetDefaultPDF(m_component));
        QVERIFY(!CCommon::EditorXmlAddfileToPkg(m_document, m_component, true));
    }

    void aSedThatFailsIsMissingOrIsKilledFailsTheAddition()
    {
        m_tools->add(QStringLiteral("sed"), "echo 'sed: no space' >&2; exit 4\n");
        QCOMPARE(problemText(addIManageEntry()), QStringLiteral("sed ended with exit code 4: sed: no space"));
        m_tools->add(QStringLiteral("sed"), "kill -9 $$\n");
        QCOMPARE(problemText(addIManageEntry()), QStringLiteral("sed was ended by a signal"));
        m_tools = std::make_unique<FakeTools>();
        m_tools->hideOthers();
        QCOMPARE(problemText(addIManageEntry()), QStringLiteral("sed could not be started"));
    }

    void aPreferenceGoesInFrontOfTheOnesThatAreListedOncePerLine()
    {
        TestFiles::write(scripts("postinstall"),
                         "plistValue=\"a:1;\" plistValue=\"b:2;\"\nplistValue=\"\"\n");
        QVERIFY(CCommon::RegistryToPkg(QStringLiteral("%1key"), QStringLiteral("%2name"),
                                       QStringLiteral("%3"), m_component, true));
        QCOMPARE(TestFiles::read(scripts("postinstall")),
                 QByteArray("plistValue=\"%1key/%2name:%3;a:1;\" "
                            "plistValue=\"b:2;\"\nplistValue=\"%1key/%2name:%3;\"\n"));
    }

    void aPreferenceValueEntersTheExpressionUnescaped_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<QByteArray>("line");
        QTest::newRow("ampersand") << QStringLiteral("a&b")
                                   << QByteArray("plistValue=\"k/n:aplistValue=\"b;\"\n");
        QTest::newRow("backslash") << QStringLiteral("\\&") << QByteArray("plistValue=\"k/n:&;\"\n");
    }

    void aPreferenceValueEntersTheExpressionUnescaped()
    {
        QFETCH(QString, value);
        TestFiles::write(scripts("postinstall"), "plistValue=\"\"\n");
        QVERIFY(CCommon::RegistryToPkg(QStringLiteral("k"), QStringLiteral("n"), value, m_component, true));
        QTEST(TestFiles::read(scripts("postinstall")), "line");
    }

    void aPlusInAPreferenceValueBreaksTheExpression()
    {
        QVERIFY(!CCommon::RegistryToPkg(QStringLiteral("k"), QStringLiteral("n"), QStringLiteral("a+b"),
                                        m_component, true));
        QCOMPARE(TestFiles::read(scripts("postinstall")), VendorScripts::postinstall());
    }

    void theDefaultViewerToolIsAddedExecutableAndSwitchedOn()
    {
        QVERIFY(CCommon::SetDefaultPDF(m_component));
        QCOMPARE(TestFiles::read(scripts("duti")), TestFiles::read(QStringLiteral(":/duti")));
        const auto execute = QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther;
        QCOMPARE(QFile::permissions(scripts("duti")) & execute, QFile::Permissions(execute));
        QVERIFY(TestFiles::read(scripts("postinstall")).contains("\nsetdefaultpdf=1\n"));
    }

    void theDefaultViewerToolIsNotSearchedBelowTheExpansionsTopFolder()
    {
        LogCapture log;
        QVERIFY(!CCommon::SetDefaultPDF(m_folder->filePath(QStringLiteral("work folder"))));
        QVERIFY(log.has(QStringLiteral("SetDefaultPDF: copy duti fail!")));
    }

    void aDefaultViewerToolThatIsThereAlreadyFailsTheAddition()
    {
        TestFiles::write(scripts("duti"), "old");
        LogCapture log;
        QCOMPARE(problemText(ExpandedPackage::makeDefaultViewer(m_component)),
                 scripts("duti") + QStringLiteral(": exists already"));
        QVERIFY(log.has(QStringLiteral("SetDefaultPDF: copy duti fail!")));
        QCOMPARE(TestFiles::read(scripts("duti")), QByteArray("old"));
        QVERIFY(TestFiles::read(scripts("postinstall")).contains("setdefaultpdf=0"));
    }

    void aFileIsAddedToTheComponentPackageBelowTheTopFolder()
    {
        const QString top = m_folder->filePath(QStringLiteral("work folder"));
        QVERIFY(CCommon::AddFileToPkg(m_document, top, true));
        QCOMPARE(TestFiles::read(scripts("document.xml")), QByteArray("<document/>"));
        QVERIFY(!CCommon::AddFileToPkg(m_folder->filePath(QStringLiteral("missing")), top, true));
        LogCapture log;
        QVERIFY(!CCommon::AddFileToPkg(m_document, top, true));
        QVERIFY(!CCommon::AddFileToPkg(m_document, top, false));
        QCOMPARE(log.lines(), QStringList({QStringLiteral("AddFileToPkg: copy file fail!"),
                                           QStringLiteral("AddFileToPkg: copy file fail!")}));
    }

    void theConfigurationDocumentIsKeptAndAdded()
    {
        const QString kept = m_folder->filePath(QStringLiteral("kept.xml"));
        LogCapture log;
        QVERIFY(CCommon::EditorXmlConfigfileToPkg(m_component, true, kept));
        const QByteArray document = TestFiles::read(kept);
        QVERIFY(document.startsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<PelixPDFEditor "));
        QVERIFY(document.contains("version=\"13.1.2\""));
        QCOMPARE(TestFiles::read(scripts("ProfStore.xml")), document);
        QVERIFY(log.has(QStringLiteral("xmlFilePath : ") + kept));
        QVERIFY(log.has(QStringLiteral("qsTemp:") + m_component + QStringLiteral("/Scripts/")));
    }

    void withoutAPathTheDocumentStaysInTheTemporaryFolder()
    {
        const QByteArray temporaryFolder = qgetenv("TMPDIR");
        qputenv("TMPDIR", QFile::encodeName(m_folder->path()));
        const bool added = CCommon::EditorXmlConfigfileToPkg(m_component, true, QString());
        qputenv("TMPDIR", temporaryFolder);
        QVERIFY(added);
        QCOMPARE(TestFiles::read(m_folder->filePath(QStringLiteral("ProfStore.xml"))),
                 TestFiles::read(scripts("ProfStore.xml")));
    }

    void aDocumentPathThatCannotBeWrittenFailsBeforeAnythingIsAdded_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("missing folder") << QStringLiteral("missing/ProfStore.xml");
        QTest::newRow("link") << QStringLiteral("link");
        QTest::newRow("pipe") << QStringLiteral("pipe");
        QTest::newRow("folder") << QStringLiteral("work folder");
    }

    void aDocumentPathThatCannotBeWrittenFailsBeforeAnythingIsAdded()
    {
        QFETCH(QString, name);
        QVERIFY(QFile::link(m_document, m_folder->filePath(QStringLiteral("link"))));
        QCOMPARE(::mkfifo(QFile::encodeName(m_folder->filePath(QStringLiteral("pipe"))).constData(), 0600),
                 0);
        QVERIFY(!CCommon::EditorXmlConfigfileToPkg(m_component, true, m_folder->filePath(name)));
        QVERIFY(problemText(addSettings(m_folder->filePath(name)))
                    .startsWith(m_folder->filePath(name) + QStringLiteral(": ")));
        QVERIFY(!QFileInfo::exists(scripts("ProfStore.xml")));
        QCOMPARE(TestFiles::read(scripts("postinstall")), VendorScripts::postinstall());
        QCOMPARE(TestFiles::read(m_document), QByteArray("<document/>"));
    }

    void aScriptThatCannotBeReadIsNoScriptWithoutAVersion()
    {
        QFile script(scripts("postinstall"));
        QVERIFY(script.resize(qint64{17} * 1024 * 1024));
        QVERIFY(!CCommon::EditorXmlConfigfileToPkg(m_component, true, m_document));
        QCOMPARE(problemText(addSettings(m_document)),
                 script.fileName() + QStringLiteral(": is too large for a script"));
        QVERIFY(!QFileInfo::exists(scripts("ProfStore.xml")));
        QCOMPARE(TestFiles::read(m_document), QByteArray("<document/>"));
    }

    void aReadOnlyFolderForTheDocumentFailsBeforeAnythingIsAdded()
    {
        if (::geteuid() == 0)
            QSKIP("root may write everywhere");
        const QString folder = m_folder->filePath(QStringLiteral("read-only"));
        QVERIFY(QDir().mkdir(folder));
        QVERIFY(QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner));
        QVERIFY(
            !CCommon::EditorXmlConfigfileToPkg(m_component, true, folder + QStringLiteral("/ProfStore.xml")));
        QVERIFY(!QFileInfo::exists(scripts("ProfStore.xml")));
    }

    void adaptingPatchesTheScriptOfTheComponent()
    {
        TestFiles::write(scripts("preinstall"), VendorScripts::preinstall());
        QVERIFY(CCommon::AdaptPreInstallForIntune(m_component, true));
        QVERIFY(CCommon::AdaptPostInstallForIntune(m_component, true));
        QVERIFY(TestFiles::read(scripts("preinstall")).contains("export HOME="));
        QVERIFY(TestFiles::read(scripts("postinstall")).contains("export HOME="));
    }

    void adaptingLogsWhyItFailed()
    {
        TestFiles::write(scripts("preinstall"), "#!/bin/sh\n");
        TestFiles::write(scripts("postinstall"), "#!/bin/sh\n");
        const QString error = problemText(ExpandedPackage::adaptPreinstall(m_component, Product::editor()));
        LogCapture log;
        QVERIFY(!CCommon::AdaptPreInstallForIntune(m_component, true));
        QVERIFY(!CCommon::AdaptPostInstallForIntune(m_component, true));
        QCOMPARE(error, QStringLiteral("anchor is not unique: [mydir=`pwd`], count=0"));
        QCOMPARE(log.lines().first(), QStringLiteral("adapt preinstall for Intune failed: ") + error);
        QVERIFY(log.lines().last().startsWith(
            QStringLiteral("adapt postinstall for Intune failed: anchor is not unique: [appdatePath=")));
    }

private:
    QString scripts(const char *name) const
    {
        return m_component + QStringLiteral("/Scripts/") + QString::fromLatin1(name);
    }

    Result<> addDocument() const
    {
        return ExpandedPackage::addDocument(m_document, m_component, Product::editor());
    }

    Result<> addSettings(const QString &path) const
    {
        return ExpandedPackage::addSettings(m_component, Product::editor(), theEditorXmlData, path);
    }

    Result<> addIManageEntry() const
    {
        return ExpandedPackage::addPreference(
            {QStringLiteral("iManage10/loginMethod"), QStringLiteral("UseOAuth2"), QStringLiteral("1")},
            m_component, Product::editor());
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<FakeTools> m_tools;
    QString m_component;
    QString m_document;
};

QTEST_GUILESS_MAIN(tst_PackageAdditions)
#include "tst_PackageAdditions.moc"
