// SPDX-License-Identifier: Apache-2.0
#include "config/CCommon.h"
#include "config/ConfigDocument.h"
#include "config/EditorXmlData.h"
#include "config/KeptElement.h"
#include "config/Settings.h"
#include "tests/config/RecordSamples.h"
#include "tests/support/TestFiles.h"

#include <QDomDocument>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

class tst_ConfigDocumentReading : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_data = EditorXmlData();
    }

    void anEmptyRootChangesNothing()
    {
        const EditorXmlData before = RecordSamples::everythingChanged();
        m_data = before;
        QVERIFY(parse("<PelixPDFEditor/>"));
        QVERIFY(m_data == before);
    }

    void preferencesAreFoundAtAnyDepthAndOnlyTheFirst()
    {
        QVERIFY(parse("<r><x><y><Preferences><Preference Text='Advertise' Disable='1'/></Preferences></y></x>"
                      "<Preferences><Preference Text='HideMyApps' Mode='1'/></Preferences></r>"));
        QVERIFY(m_data.bRemoveAdvertise);
        QVERIFY(!m_data.bHideMyApps);
    }

    void onlyTheExactTextOneIsTrue_data()
    {
        QTest::addColumn<QByteArray>("mode");
        QTest::addColumn<bool>("value");
        QTest::newRow("1") << QByteArray("Mode='1'") << true;
        QTest::newRow("true") << QByteArray("Mode='true'") << false;
        QTest::newRow("0") << QByteArray("Mode='0'") << false;
        QTest::newRow("blank before") << QByteArray("Mode=' 1'") << false;
        QTest::newRow("missing") << QByteArray() << false;
    }

    void onlyTheExactTextOneIsTrue()
    {
        QFETCH(QByteArray, mode);
        QFETCH(bool, value);
        m_data.bShowStartPage = !value;
        QVERIFY(parsePreference("Text='StartPage' " + mode));
        QCOMPARE(m_data.bShowStartPage, value);
    }

    void everyPreferenceIsRead()
    {
        QVERIFY(parse("<r><Preferences>"
                      "<Preference Text='StartPage' Mode='0'/>"
                      "<Preference Text='Advertise' Disable='1'/>"
                      "<Preference Text='bMIPCheckPolicyOnDocSave' Mode='1'/>"
                      "<Preference Text='AuthLibrary' Mode='1'/>"
                      "<Preference Text='DefaultLaunchAttachmentPerms' Mode='1' BuiltInPermList='version:1'"
                      " DisableOpenSaveFileAttach='Disabled'/>"
                      "<Preference Text='HideMyApps' Mode='1'/>"
                      "<Preference Text='iManage10loginMethod' UseOAuth2='1'/>"
                      "<Preference Text='LoginDomain' String='2'/>"
                      "<Preference Text='LoginDomainList' String='@a.example;@b.example'/>"
                      "<Preference Text='SupportExtSSO' Mode='1'/>"
                      "</Preferences></r>"));
        EditorXmlData wanted;
        wanted.bShowStartPage = false;
        wanted.bRemoveAdvertise = true;
        wanted.bMIPCheckPolicySet = true;
        wanted.nMIPCheckPolicyOnDocSave = 1;
        wanted.nAuthLibrary = 1;
        wanted.bDisableOpenFileAll = true;
        wanted.strBuiltInPermList = QStringLiteral("version:1");
        wanted.strDisableOpenSaveFileAttach = QStringLiteral("Disabled");
        wanted.bHideMyApps = true;
        wanted.bUseOAuth2 = true;
        wanted.strLoginDomain = QStringLiteral("2");
        wanted.strLoginDomainList = QStringLiteral("@a.example;@b.example");
        wanted.bSupportExtSSO = true;
        for (const Setting &setting : settings())
            QVERIFY2(sameValue(setting, m_data, wanted), setting.name.data());
    }

    void keysAreCaseSensitiveAndUnknownOnesIgnored()
    {
        QVERIFY(parsePreference("Text='startpage' Mode='0'"));
        QVERIFY(parsePreference("Text='Unknown' Mode='0'"));
        QVERIFY(m_data == EditorXmlData());
    }

    void anyElementNameCountsAsAPreference()
    {
        QVERIFY(parse("<r><Preferences><Other Text='HideMyApps' Mode='1'/></Preferences></r>"));
        QVERIFY(m_data.bHideMyApps);
    }

    void mipPolicyIsSetOnlyByANumber_data()
    {
        QTest::addColumn<QByteArray>("mode");
        QTest::addColumn<bool>("set");
        QTest::addColumn<int>("policy");
        QTest::newRow("word") << QByteArray("abc") << false << -1;
        QTest::newRow("zero") << QByteArray("0") << true << 0;
        QTest::newRow("one") << QByteArray("1") << true << 1;
        QTest::newRow("five") << QByteArray("5") << true << 5;
        QTest::newRow("negative") << QByteArray("-3") << true << -3;
        QTest::newRow("empty") << QByteArray() << false << -1;
        QTest::newRow("hexadecimal") << QByteArray("0x1") << false << -1;
        QTest::newRow("beyond 32 bits") << QByteArray("99999999999") << false << -1;
    }

    void mipPolicyIsSetOnlyByANumber()
    {
        QFETCH(QByteArray, mode);
        m_data.bMIPCheckPolicySet = true;
        m_data.nMIPCheckPolicyOnDocSave = 7;
        QVERIFY(parsePreference("Text='bMIPCheckPolicyOnDocSave' Mode='" + mode + "'"));
        QTEST(m_data.bMIPCheckPolicySet, "set");
        QTEST(m_data.nMIPCheckPolicyOnDocSave, "policy");
    }

    void defaultViewerIsOnlyKeptByZero_data()
    {
        QTest::addColumn<QByteArray>("disable");
        QTest::addColumn<bool>("viewer");
        QTest::newRow("0") << QByteArray("Disable='0'") << true;
        QTest::newRow("1") << QByteArray("Disable='1'") << false;
        QTest::newRow("missing") << QByteArray() << false;
        QTest::newRow("other") << QByteArray("Disable='false'") << false;
    }

    void defaultViewerIsOnlyKeptByZero()
    {
        QFETCH(QByteArray, disable);
        QFETCH(bool, viewer);
        m_data.bSetAsDefaultViewer = !viewer;
        QVERIFY(parse("<r><Installation_Options><Installation_Option Text='SetAsDefaultViewer' " + disable +
                      "/><Installation_Option Text='Other' Disable='1'/></Installation_Options></r>"));
        QCOMPARE(m_data.bSetAsDefaultViewer, viewer);
    }

    void pluginListsAreJoined_data()
    {
        QTest::addColumn<QByteArray>("section");
        QTest::addColumn<QString>("list");
        QTest::newRow("no section") << QByteArray() << QStringLiteral("before");
        QTest::newRow("no children") << QByteArray("<Plugins/>") << QString();
        QTest::newRow("one") << QByteArray("<Plugins><Plugin UnloadPluginArray='a;b;'/></Plugins>")
                             << QStringLiteral("a;b;");
        QTest::newRow("three without the attribute")
            << QByteArray("<Plugins><Plugin/><Plugin/><Plugin/></Plugins>") << QStringLiteral(";;");
    }

    void pluginListsAreJoined()
    {
        QFETCH(QByteArray, section);
        m_data.strUnloadPluginArray = QStringLiteral("before");
        QVERIFY(parse("<r>" + section + "</r>"));
        QTEST(m_data.strUnloadPluginArray, "list");
    }

    void ribbonElementsAreTakenFromTheirSections()
    {
        QVERIFY(parse("<r><RibbonSetRibbonCategory><x/><RibbonUI><Category Text='Home'/></RibbonUI>"
                      "</RibbonSetRibbonCategory><RibbonSetTabElements><QuickAccessBar><control/>"
                      "</QuickAccessBar></RibbonSetTabElements></r>"));
        QCOMPARE(elementText(m_data.elemRibbonCategory),
                 QStringLiteral("<RibbonUI><Category Text=\"Home\"/></RibbonUI>"));
        QCOMPARE(elementText(m_data.elemQuickAccessBar),
                 QStringLiteral("<QuickAccessBar><control/></QuickAccessBar>"));
    }

    void emptyRibbonSectionsClearTheRibbon()
    {
        m_data = RecordSamples::everythingChanged();
        QVERIFY(parse("<r><RibbonSetRibbonCategory/><RibbonSetTabElements/></r>"));
        QVERIFY(m_data.elemRibbonCategory.isNull());
        QVERIFY(m_data.elemQuickAccessBar.isNull());
    }

    void whatIsReadOfTheRibbonIsPrinted()
    {
        QTest::ignoreMessage(QtDebugMsg,
                             "CCommon::ParseXml ribbon category element:    <RibbonUI a=\"1\"/>\n");
        QTest::ignoreMessage(QtDebugMsg, "CCommon::ParseXml element element:    <QuickAccessBar b=\"2\"/>\n");
        QVERIFY(parse("<r><RibbonSetRibbonCategory><RibbonUI a='1'/></RibbonSetRibbonCategory>"
                      "<RibbonSetTabElements><QuickAccessBar b='2'/></RibbonSetTabElements></r>"));
    }

    void withoutARecordReadingFails()
    {
        QTest::ignoreMessage(QtDebugMsg, "ParseXml: pData is null.");
        QVERIFY(!CCommon::ParseXml(write("<r/>"), nullptr));
    }

    void aMissingFileFails()
    {
        const QString path = m_folder->filePath(QStringLiteral("missing.xml"));
        QTest::ignoreMessage(QtDebugMsg,
                             qPrintable(QStringLiteral("ParseXml: Failed to open file: \"%1\"").arg(path)));
        QVERIFY(!CCommon::ParseXml(path, &m_data));
    }

    void whatIsNoRegularFileIsNotOpened()
    {
        const QString pipe = m_folder->filePath(QStringLiteral("pipe.xml"));
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        QVERIFY(!CCommon::ParseXml(pipe, &m_data));
        QVERIFY(!CCommon::ParseXml(m_folder->path(), &m_data));
    }

    void malformedContentFailsAndChangesNothing_data()
    {
        QTest::addColumn<QByteArray>("xml");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("truncated") << QByteArray("<r><Preferences><Preference Text='HideMyApps' Mode='1'/>");
        QTest::newRow("entity bomb") << QByteArray("<!DOCTYPE r [<!ENTITY a 'a'>]><r>&a;</r>");
        QTest::newRow("deep") << QByteArray("<r>").repeated(100000) + QByteArray("</r>").repeated(100000);
        QTest::newRow("NUL") << QByteArray("<r a='\0'/>", 10);
        QTest::newRow("huge") << QByteArray("<r>") + QByteArray(40 * 1024 * 1024, ' ') + QByteArray("</r>");
    }

    void malformedContentFailsAndChangesNothing()
    {
        QFETCH(QByteArray, xml);
        QTest::ignoreMessage(QtDebugMsg,
                             QRegularExpression(QStringLiteral("ParseXml: Failed to parse XML content\\.")));
        QVERIFY(!parse(xml));
        QVERIFY(m_data == EditorXmlData());
    }

    /// The window reads on the thread that answers the user.
    void theWindowImportsNoMoreThanItCanAtOnce()
    {
        const QByteArray start("<r><Preferences><Preference Text='HideMyApps' Mode='1'/></Preferences></r>");
        const QByteArray largest =
            start + QByteArray(int(ConfigDocument::maximumImportBytes) - start.size(), ' ');
        QVERIFY(parse(largest));
        QVERIFY(m_data.bHideMyApps);
        m_data.bHideMyApps = false;
        QTest::ignoreMessage(QtDebugMsg, QRegularExpression(QStringLiteral("it is larger than 1 MiB")));
        QVERIFY(!parse(largest + ' '));
        QVERIFY(!m_data.bHideMyApps);
        QVERIFY(ConfigDocument::load(write(largest + ' ')));
    }

    void aByteOrderMarkIsAccepted()
    {
        QVERIFY(parse("\xef\xbb\xbf<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<r><Preferences>"
                      "<Preference Text='HideMyApps' Mode='1'/></Preferences></r>"));
        QVERIFY(m_data.bHideMyApps);
    }

    void printingAnElementIndentsByFour()
    {
        // Qt counts the element itself as one level.
        QTest::ignoreMessage(QtDebugMsg, "tag element:    <a>\n        <b/>\n    </a>\n");
        CCommon::printDomElement(QStringLiteral("tag"), RecordSamples::element("<a><b/></a>"));
    }

private:
    QString write(const QByteArray &xml) const
    {
        const QString path = m_folder->filePath(QStringLiteral("document.xml"));
        TestFiles::write(path, xml);
        return path;
    }

    bool parse(const QByteArray &xml) { return CCommon::ParseXml(write(xml), &m_data); }

    bool parsePreference(const QByteArray &attributes)
    {
        return parse("<r><Preferences><Preference " + attributes + "/></Preferences></r>");
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    EditorXmlData m_data;
};

QTEST_GUILESS_MAIN(tst_ConfigDocumentReading)
#include "tst_ConfigDocumentReading.moc"
