// SPDX-License-Identifier: Apache-2.0
#include "config/CCommon.h"
#include "config/EditorXmlData.h"
#include "config/Settings.h"
#include "tests/config/RecordSamples.h"
#include "tests/config/SettingOracle.h"

#include <QtTest>

#include <functional>

using SettingOracle::Change;

class tst_EditorXmlData : public QObject
{
    Q_OBJECT

private slots:
    void aNewRecordHoldsTheDefaults()
    {
        const EditorXmlData data;
        QVERIFY(data.bShowStartPage);
        QVERIFY(!data.bRemoveAdvertise);
        QCOMPARE(data.strDisableOpenSaveFileAttach, QStringLiteral("Default"));
        QCOMPARE(data.nFileAttachmentsMode, -1);
        QVERIFY(data.strBuiltInPermList.isEmpty());
        QVERIFY(!data.bDisableOpenFileAll);
        QVERIFY(data.strUnloadPluginArray.isEmpty());
        QVERIFY(!data.bMIPCheckPolicySet);
        QCOMPARE(data.nMIPCheckPolicyOnDocSave, -1);
        QCOMPARE(data.nAuthLibrary, 0);
        QVERIFY(!data.bHideMyApps && !data.bSupportExtSSO && !data.bUseOAuth2);
        QVERIFY(data.elemRibbonCategory.isNull() && data.elemQuickAccessBar.isNull());
        QCOMPARE(data.strLoginDomain, QStringLiteral("1"));
        QVERIFY(data.strLoginDomainList.isEmpty());
        QVERIFY(data.bSetAsDefaultViewer);
        QVERIFY(data.payloadInfo.PayloadIdentifier.isEmpty());
    }

    void clearResetsExactlyItsPart()
    {
        const QStringList reset = SettingOracle::collectedAnew();
        const EditorXmlData before = RecordSamples::everythingChanged();
        EditorXmlData data = before;
        data.Clear();
        for (const Setting &setting : settings()) {
            const EditorXmlData &wanted = reset.contains(setting.name) ? EditorXmlData() : before;
            QVERIFY2(sameValue(setting, data, wanted), setting.name.data());
        }
    }

    void clearKeepsTheProfilesIdentity()
    {
        EditorXmlData data;
        data.payloadInfo.PayloadIdentifier = QStringLiteral("mac.1");
        data.Clear();
        QCOMPARE(data.payloadInfo.PayloadIdentifier, QStringLiteral("mac.1"));
    }

    void theSampleChangesEverySetting()
    {
        for (const Setting &setting : settings())
            QVERIFY2(!sameValue(setting, RecordSamples::everythingChanged(), EditorXmlData()),
                     setting.name.data());
    }

    void oneSettingThatDiffersMakesARecordDiffer_data()
    {
        QTest::addColumn<Change>("change");
        const auto row = [](const char *name, const Change &change) { QTest::newRow(name) << change; };
        row("start page", [](auto &data) { data.bShowStartPage = false; });
        row("advertisements", [](auto &data) { data.bRemoveAdvertise = true; });
        row("attachments as text", [](auto &data) { data.strDisableOpenSaveFileAttach.clear(); });
        row("attachments as choice", [](auto &data) { data.nFileAttachmentsMode = 0; });
        row("file types", [](auto &data) { data.strBuiltInPermList = QStringLiteral("a"); });
        row("block everything", [](auto &data) { data.bDisableOpenFileAll = true; });
        row("plug-ins", [](auto &data) { data.strUnloadPluginArray = QStringLiteral("a"); });
        row("whether there is a policy", [](auto &data) { data.bMIPCheckPolicySet = true; });
        row("policy", [](auto &data) { data.nMIPCheckPolicyOnDocSave = 0; });
        row("sign-in library", [](auto &data) { data.nAuthLibrary = 1; });
        row("applications area", [](auto &data) { data.bHideMyApps = true; });
        row("external browser", [](auto &data) { data.bSupportExtSSO = true; });
        row("ribbon", [](auto &data) { data.elemRibbonCategory = RecordSamples::element("<RibbonUI/>"); });
        row("quick-access bar",
            [](auto &data) { data.elemQuickAccessBar = RecordSamples::element("<QuickAccessBar/>"); });
        row("OAuth 2", [](auto &data) { data.bUseOAuth2 = true; });
        row("domain mode", [](auto &data) { data.strLoginDomain = QStringLiteral("2"); });
        row("domains", [](auto &data) { data.strLoginDomainList = QStringLiteral("a"); });
        row("default viewer", [](auto &data) { data.bSetAsDefaultViewer = false; });
        row("name", [](auto &data) { data.payloadInfo.PayloadDisplayName = QStringLiteral("a"); });
        row("identifier", [](auto &data) { data.payloadInfo.PayloadIdentifier = QStringLiteral("a"); });
        row("UUID", [](auto &data) { data.payloadInfo.PayloadUUID = QStringLiteral("a"); });
        row("organization", [](auto &data) { data.payloadInfo.PayloadOrganization = QStringLiteral("a"); });
        row("description", [](auto &data) { data.payloadInfo.PayloadDescription = QStringLiteral("a"); });
    }

    void oneSettingThatDiffersMakesARecordDiffer()
    {
        QFETCH(Change, change);
        EditorXmlData changed;
        change(changed);
        QVERIFY(changed != EditorXmlData());
        EditorXmlData likewise;
        change(likewise);
        QVERIFY(changed == likewise);
    }

    void ribbonsAreComparedByContent()
    {
        EditorXmlData first;
        EditorXmlData second;
        first.elemRibbonCategory = RecordSamples::element("<RibbonUI><A x=\"1\" y=\"2\"/></RibbonUI>");
        second.elemRibbonCategory = RecordSamples::element("<RibbonUI>\n  <A y=\"2\" x=\"1\"/>\n</RibbonUI>");
        QVERIFY(first == second);
        second.elemRibbonCategory = RecordSamples::element("<RibbonUI><A x=\"1\" y=\"3\"/></RibbonUI>");
        QVERIFY(first != second);
        second.elemRibbonCategory = RecordSamples::element("<RibbonUI><A x=\"1\" y=\"2\"/><B/></RibbonUI>");
        QVERIFY(first != second);
    }

    void theModesKeepTheirNumbers()
    {
        CCommon::SetPCWConfigType(PCW_CONFIG_PROFILE);
        CCommon::SetPCWAppType(PCW_APP_READER);
        QCOMPARE(int(CCommon::GetPCWConfigType()), 1);
        QCOMPARE(int(CCommon::GetPCWAppType()), 1);
        CCommon::SetPCWConfigType(PCW_CONFIG_PACKAGE);
        CCommon::SetPCWAppType(PCW_APP_EDITOR);
        QCOMPARE(int(CCommon::GetPCWConfigType()), 0);
        QCOMPARE(int(CCommon::GetPCWAppType()), 0);
    }
};

QTEST_GUILESS_MAIN(tst_EditorXmlData)
#include "tst_EditorXmlData.moc"
