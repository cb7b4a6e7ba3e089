// SPDX-License-Identifier: Apache-2.0
#include "app/DlgCustomizationTool_v2.h"
#include "app/RegisterPages.h"
#include "config/EditorXmlData.h"
#include "config/Settings.h"
#include "resources/Resources.h"
#include "tests/app/FakeHandler.h"
#include "tests/config/SettingOracle.h"

#include <QCheckBox>
#include <QtTest>

namespace {

using SettingOracle::Change;
using Handler = std::shared_ptr<FakeHandler>;

/// A window with two fake pages.
struct Fixture
{
    explicit Fixture(bool editor = true)
        : window(editor, PCW_CONFIG_PACKAGE)
    {
        window.Register(second);
        window.Register(first);
    }

    Handler first = std::make_shared<FakeHandler>(1);
    Handler second = std::make_shared<FakeHandler>(2);
    DlgCustomizationTool_v2 window;
};

EditorXmlData &record()
{
    return *DlgCustomizationTool_v2::m_pEditorXmlData;
}

} // namespace

class tst_CollectRecord : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initPctResources(); }
    void init() { record() = EditorXmlData(); }

    void theWindowWorksOnTheOneRecord()
    {
        QCOMPARE(DlgCustomizationTool_v2::m_pEditorXmlData, &theEditorXmlData);
    }

    void everyRowEntersItsMember();
    void aControlEntersItsMemberAlone_data();
    void aControlEntersItsMemberAlone();
    void whatNoPageOffersBecomesFalseZeroOrEmpty();
    void theCheckPolicyFollowsTheIndex_data();
    void theCheckPolicyFollowsTheIndex();
    void theDomainModeIsOneWhenCheckedAndTwoWhenNot();
    void theControlsAreAskedForInOrderWithThePagesOwnCallInBetween();
    void beforeSaveIsCalledOncePerPageInIdOrder();
    void aPageMaySetMembersBeforeSaving();
    void theExternalBrowserSettingStaysWhenNoPageHasTheControl();
    void theExternalBrowserSettingFollowsItsControl();
    void afterUncheckingManagedLoginTheRecordStillUsesOAuth2();
    void theProfileIdentifierIsMadeOnce();
    void anImportedProfileIdentifierIsKept();
    void withoutThePluginsPageTheListOfPluginsBecomesEmpty();
    void theRealPagesAreCollected();

    void theFirstPageWithAValueOfTheTypeAnswers();
    void aValueThatDoesNotConvertGivesTheDefaultAndIsFound();
    void aMissingControlIsNotFound();
    void aRefusedValueIsReportedToItsPageAndReturned();
};

void tst_CollectRecord::everyRowEntersItsMember()
{
    Fixture fixture;
    fixture.first->m_values = {
        {QStringLiteral("checkBox_showStartPg"), true},
        {QStringLiteral("checkBox_removeAdvertise"), true},
        {QStringLiteral("cb_hidemyapps"), true},
        {QStringLiteral("cb_fileattachmentsMode"), 2},
        {QStringLiteral("tt_defaultLaunchAttachmentPerms"), QStringLiteral("version:1|.x:2")},
        {QStringLiteral("rb_disableopenfile_all"), true},
        {QStringLiteral("cb_aip_options"), 2},
        {QStringLiteral("cb_auth_lib_options"), 1}};
    fixture.second->m_values = {{QStringLiteral("listWidget_pluginList"), QStringLiteral("a.dylib;")},
                                {QStringLiteral("cb_UseExternalBrowserForSSO"), true},
                                {QStringLiteral("cb_biManageLogin"), true},
                                {QStringLiteral("cb_allowed_whitelist"), true},
                                {QStringLiteral("tableView_domains"), QStringLiteral("example.org")},
                                {QStringLiteral("cb_defaultpdf"), true}};
    record().payloadInfo.PayloadIdentifier = QStringLiteral("kept");
    fixture.window.ReloadEditorXmlData();

    EditorXmlData expected;
    expected.bShowStartPage = true;
    expected.bRemoveAdvertise = true;
    expected.bHideMyApps = true;
    expected.nFileAttachmentsMode = 2;
    expected.strBuiltInPermList = QStringLiteral("version:1|.x:2");
    expected.bDisableOpenFileAll = true;
    expected.bMIPCheckPolicySet = true;
    expected.nMIPCheckPolicyOnDocSave = 1;
    expected.nAuthLibrary = 1;
    expected.strUnloadPluginArray = QStringLiteral("a.dylib;");
    expected.bSupportExtSSO = true;
    expected.bUseOAuth2 = true;
    expected.strLoginDomain = QStringLiteral("1");
    expected.strLoginDomainList = QStringLiteral("example.org");
    expected.bSetAsDefaultViewer = true;
    expected.payloadInfo.PayloadIdentifier = QStringLiteral("kept");
    QVERIFY(record() == expected);
}

void tst_CollectRecord::aControlEntersItsMemberAlone_data()
{
    QTest::addColumn<QString>("control");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<Change>("change");
    for (const SettingOracle::Row &row : SettingOracle::rows())
        QTest::newRow(row.control) << QString::fromLatin1(row.control) << row.shown << row.change;
    // Those whose value above is that of a control that is not there.
    QTest::newRow("start page") << QStringLiteral("checkBox_showStartPg") << QVariant(true)
                                << Change([](EditorXmlData &data) { data.bShowStartPage = true; });
    QTest::newRow("whitelist") << QStringLiteral("cb_allowed_whitelist") << QVariant(true)
                               << Change(
                                      [](EditorXmlData &data) { data.strLoginDomain = QStringLiteral("1"); });
    QTest::newRow("viewer") << QStringLiteral("cb_defaultpdf") << QVariant(true)
                            << Change([](EditorXmlData &data) { data.bSetAsDefaultViewer = true; });
}

/// The only one that is not false, zero or empty.
void tst_CollectRecord::aControlEntersItsMemberAlone()
{
    QFETCH(QString, control);
    QFETCH(QVariant, value);
    QFETCH(Change, change);
    Fixture fixture;
    fixture.first->m_values[control] = value;
    record().payloadInfo.PayloadIdentifier = QStringLiteral("kept");
    fixture.window.ReloadEditorXmlData();

    EditorXmlData expected;
    expected.bShowStartPage = false;
    expected.nFileAttachmentsMode = 0;
    expected.strLoginDomain = QStringLiteral("2");
    expected.bSetAsDefaultViewer = false;
    expected.payloadInfo.PayloadIdentifier = QStringLiteral("kept");
    change(expected);
    for (const Setting &setting : settings())
        QVERIFY2(sameValue(setting, record(), expected), setting.name.data());
}

void tst_CollectRecord::whatNoPageOffersBecomesFalseZeroOrEmpty()
{
    record().payloadInfo.PayloadIdentifier = QStringLiteral("kept");
    record().nAuthLibrary = 1;
    record().strLoginDomainList = QStringLiteral("example.org");
    Fixture fixture;
    fixture.window.ReloadEditorXmlData();

    EditorXmlData expected;
    expected.bShowStartPage = false;
    expected.nFileAttachmentsMode = 0;
    expected.strLoginDomain = QStringLiteral("2");
    expected.bSetAsDefaultViewer = false;
    expected.payloadInfo.PayloadIdentifier = QStringLiteral("kept");
    QVERIFY(record() == expected);
}

void tst_CollectRecord::theCheckPolicyFollowsTheIndex_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("set");
    QTest::addColumn<int>("policy");
    QTest::newRow("nothing chosen") << -1 << false << -1;
    QTest::newRow("not set") << 0 << false << -1;
    QTest::newRow("off") << 1 << true << 0;
    QTest::newRow("on") << 2 << true << 1;
    QTest::newRow("beyond") << 3 << false << -1;
}

void tst_CollectRecord::theCheckPolicyFollowsTheIndex()
{
    QFETCH(int, index);
    Fixture fixture;
    fixture.first->m_values[QStringLiteral("cb_aip_options")] = index;
    fixture.window.ReloadEditorXmlData();
    QTEST(record().bMIPCheckPolicySet, "set");
    QTEST(record().nMIPCheckPolicyOnDocSave, "policy");
}

void tst_CollectRecord::theDomainModeIsOneWhenCheckedAndTwoWhenNot()
{
    Fixture fixture;
    QVariant &checked = fixture.first->m_values[QStringLiteral("cb_allowed_whitelist")];
    checked = true;
    fixture.window.ReloadEditorXmlData();
    QCOMPARE(record().strLoginDomain, QStringLiteral("1"));
    checked = false;
    fixture.window.ReloadEditorXmlData();
    QCOMPARE(record().strLoginDomain, QStringLiteral("2"));
}

void tst_CollectRecord::theControlsAreAskedForInOrderWithThePagesOwnCallInBetween()
{
    Fixture fixture;
    fixture.window.ReloadEditorXmlData();
    QCOMPARE(fixture.first->m_asked, SettingOracle::turns());
}

void tst_CollectRecord::beforeSaveIsCalledOncePerPageInIdOrder()
{
    Fixture fixture;
    QList<int> order;
    for (const Handler &handler : {fixture.second, fixture.first})
        handler->m_onBeforeSave = [&order, id = handler->m_id] { order << id; };
    fixture.window.ReloadEditorXmlData();
    QCOMPARE(order, QList<int>({1, 2}));
}

void tst_CollectRecord::aPageMaySetMembersBeforeSaving()
{
    QDomDocument document;
    Fixture fixture;
    fixture.first->m_onBeforeSave = [&document] {
        record().elemRibbonCategory = document.createElement(QStringLiteral("RibbonUI"));
    };
    fixture.window.ReloadEditorXmlData();
    QCOMPARE(record().elemRibbonCategory.tagName(), QStringLiteral("RibbonUI"));
}

void tst_CollectRecord::theExternalBrowserSettingStaysWhenNoPageHasTheControl()
{
    record().bSupportExtSSO = true;
    Fixture fixture;
    fixture.window.ReloadEditorXmlData();
    QCOMPARE(record().bSupportExtSSO, true);
}

void tst_CollectRecord::theExternalBrowserSettingFollowsItsControl()
{
    record().bSupportExtSSO = true;
    Fixture fixture;
    fixture.first->m_values[QStringLiteral("cb_UseExternalBrowserForSSO")] = false;
    fixture.window.ReloadEditorXmlData();
    QCOMPARE(record().bSupportExtSSO, false);
}

void tst_CollectRecord::afterUncheckingManagedLoginTheRecordStillUsesOAuth2()
{
    Fixture fixture;
    QVariant &checked = fixture.first->m_values[QStringLiteral("cb_biManageLogin")];
    checked = false;
    fixture.window.ReloadEditorXmlData();
    QCOMPARE(record().bUseOAuth2, false);
    checked = true;
    fixture.window.ReloadEditorXmlData();
    QCOMPARE(record().bUseOAuth2, true);
    checked = false;
    fixture.window.ReloadEditorXmlData();
    QCOMPARE(record().bUseOAuth2, true);
}

void tst_CollectRecord::theProfileIdentifierIsMadeOnce()
{
    Fixture fixture;
    fixture.window.ReloadEditorXmlData();
    const ProfilePayloadInfo made = record().payloadInfo;
    QVERIFY(!made.PayloadUUID.isEmpty());
    QVERIFY(made.PayloadIdentifier.endsWith(QLatin1Char('.') + made.PayloadUUID));
    fixture.window.ReloadEditorXmlData();
    QVERIFY(record().payloadInfo == made);
}

void tst_CollectRecord::anImportedProfileIdentifierIsKept()
{
    record().payloadInfo.PayloadIdentifier = QStringLiteral("host.imported");
    record().payloadInfo.PayloadUUID = QStringLiteral("imported");
    const ProfilePayloadInfo imported = record().payloadInfo;
    Fixture fixture;
    fixture.window.ReloadEditorXmlData();
    QVERIFY(record().payloadInfo == imported);
}

void tst_CollectRecord::withoutThePluginsPageTheListOfPluginsBecomesEmpty()
{
    record().strUnloadPluginArray = QStringLiteral("a.dylib;");
    Fixture fixture;
    fixture.window.ReloadEditorXmlData();
    QCOMPARE(record().strUnloadPluginArray, QString());
}

void tst_CollectRecord::theRealPagesAreCollected()
{
    DlgCustomizationTool_v2 window(false, PCW_CONFIG_PACKAGE);
    registerPages(window);
    record().bSetAsDefaultViewer = false;
    record().strUnloadPluginArray = QStringLiteral("unknown.dylib");
    window.InitTabWidgets();
    window.findChild<QCheckBox *>(QStringLiteral("cb_defaultpdf"))->setChecked(true);
    window.ReloadEditorXmlData();
    QCOMPARE(record().bSetAsDefaultViewer, true);
    QCOMPARE(record().strUnloadPluginArray, QString());
    QCOMPARE(window.EditorXmlGetPluginList(), QString());
}

void tst_CollectRecord::theFirstPageWithAValueOfTheTypeAnswers()
{
    Fixture fixture;
    fixture.first->m_values[QStringLiteral("x")] =
        QVariant(QStringList({QStringLiteral("a"), QStringLiteral("b")}));
    fixture.second->m_values[QStringLiteral("x")] = true;
    bool found = false;
    QCOMPARE(fixture.window.GetBoolProperty(QStringLiteral("x"), &found), true);
    QVERIFY(found);
}

void tst_CollectRecord::aValueThatDoesNotConvertGivesTheDefaultAndIsFound()
{
    Fixture fixture;
    fixture.first->m_values[QStringLiteral("x")] = QStringLiteral("no number");
    fixture.second->m_values[QStringLiteral("x")] = 7;
    bool found = false;
    QCOMPARE(fixture.window.GetIntProperty(QStringLiteral("x"), &found), 0);
    QVERIFY(found);
}

void tst_CollectRecord::aMissingControlIsNotFound()
{
    Fixture fixture;
    bool found = true;
    QCOMPARE(fixture.window.GetBoolProperty(QStringLiteral("x"), &found), false);
    QVERIFY(!found);
    found = true;
    QCOMPARE(fixture.window.GetIntProperty(QStringLiteral("x"), &found), 0);
    QVERIFY(!found);
    found = true;
    QCOMPARE(fixture.window.GetStringProperty(QStringLiteral("x"), &found), QString());
    QVERIFY(!found);
}

void tst_CollectRecord::aRefusedValueIsReportedToItsPageAndReturned()
{
    Fixture fixture;
    fixture.second->m_values[QStringLiteral("x")] = 41;
    bool found = true;
    const auto isEven = [](int value) { return value % 2 == 0; };
    QCOMPARE(fixture.window.GetIntProperty(QStringLiteral("x"), &found, isEven), 41);
    QVERIFY(!found);
    QCOMPARE(fixture.second->m_errors, QStringList(QStringLiteral("x")));
    QVERIFY(fixture.first->m_errors.isEmpty());

    fixture.second->m_values[QStringLiteral("x")] = 42;
    QCOMPARE(fixture.window.GetIntProperty(QStringLiteral("x"), &found, isEven), 42);
    QVERIFY(found);
    QCOMPARE(fixture.second->m_errors.size(), 1);
}

QTEST_MAIN(tst_CollectRecord)
#include "tst_CollectRecord.moc"
