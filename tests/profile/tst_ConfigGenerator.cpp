// SPDX-License-Identifier: Apache-2.0
#include "tests/config/RecordSamples.h"
#include "tests/config/SettingOracle.h"
#include "tests/profile/CocoaCalls.h"
#include "tests/profile/ProfileSamples.h"
#include "tests/support/TestFiles.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <functional>

using namespace ProfileSamples;

namespace {

QJsonObject generated(const EditorXmlData &data, bool editor = true)
{
    return readByPython(CocoaCalls::generateProfile(&data, editor).toUtf8());
}

/// Item number `index` of the settings as it stands in the profile.
QString preferenceOf(const QJsonObject &profile, int index)
{
    const QJsonObject item = payloadOf(profile)[QLatin1String("Preferences")].toArray().at(index).toObject();
    return QString::fromUtf8(
        QJsonDocument(item[QLatin1String("Preference")].toObject()).toJson(QJsonDocument::Compact));
}

QString withoutInnerUuid(QString text)
{
    static const QRegularExpression uuid(
        QStringLiteral("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}"));
    return text.replace(uuid, QStringLiteral("UUID"));
}

} // namespace

class tst_ConfigGenerator : public QObject
{
    Q_OBJECT

private slots:
    void aNullRecordGivesTheEmptyText()
    {
        const QString text = CocoaCalls::generateProfile(nullptr, true);
        QVERIFY(text.isEmpty() && !text.isNull());
    }

    void theOuterDictionaryIsThatOfTheProduct_data()
    {
        QTest::addColumn<bool>("editor");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("bundle");
        QTest::newRow("editor") << true << QStringLiteral("Pelix PDF Editor")
                                << QString::fromUtf8(editorBundle);
        QTest::newRow("reader") << false << QStringLiteral("Pelix PDF Reader")
                                << QString::fromUtf8(readerBundle);
    }

    void theOuterDictionaryIsThatOfTheProduct()
    {
        QFETCH(bool, editor);
        QFETCH(QString, name);
        QFETCH(QString, bundle);
        EditorXmlData data;
        data.payloadInfo = {QStringLiteral("unused"), QStringLiteral("mac.1"), QStringLiteral("U1"),
                            QStringLiteral("unused"), QStringLiteral("unused")};
        const QJsonObject profile = generated(data, editor);
        QCOMPARE(profile.size(), 8);
        QCOMPARE(profile[QLatin1String("PayloadType")].toString(), QStringLiteral("Configuration"));
        QCOMPARE(profile[QLatin1String("PayloadVersion")], QJsonValue(1));
        QCOMPARE(profile[QLatin1String("PayloadIdentifier")].toString(), QStringLiteral("mac.1"));
        QCOMPARE(profile[QLatin1String("PayloadUUID")].toString(), QStringLiteral("U1"));
        QCOMPARE(profile[QLatin1String("PayloadDisplayName")].toString(), name);
        QCOMPARE(profile[QLatin1String("PayloadOrganization")].toString(),
                 QStringLiteral("Pelix Software Inc."));
        QCOMPARE(profile[QLatin1String("PayloadDescription")].toString(),
                 QStringLiteral("The configuration info will apply to ") + name +
                     QStringLiteral(", only for Subscription versions 2025.1+, and Classic 13.1.8+."));
        QCOMPARE(profile[QLatin1String("PayloadContent")].toArray().size(), 1);
        QCOMPARE(payloadOf(profile).size(), 7);
        QCOMPARE(payloadOf(profile)[QLatin1String("PayloadIdentifier")].toString(), bundle);
        QCOMPARE(payloadOf(profile)[QLatin1String("PayloadType")].toString(),
                 bundle + QStringLiteral(".settings"));
    }

    void theItemsOfADefaultRecord_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("preference");
        const char *const items[] = {
            R"({"Mode":"1","Text":"StartPage"})",
            R"({"Disable":"0","Text":"Advertise"})",
            R"({"Mode":"","Text":"bMIPCheckPolicyOnDocSave"})",
            R"({"Mode":"0","Text":"AuthLibrary"})",
            R"({"BuiltInPermList":"","DisableOpenSaveFileAttach":"-1","Mode":"0","Text":"DefaultLaunchAttachmentPerms"})",
            R"({"Mode":"0","Text":"HideMyApps"})",
            R"({"Text":"iManage10loginMethod","UseOAuth2":"0"})",
            R"({"String":"1","Text":"LoginDomain"})",
            R"({"String":"","Text":"LoginDomainList"})",
            R"({"Mode":"0","Text":"SupportExtSSO"})",
        };
        int index = 0;
        for (const char *item : items)
            QTest::newRow(item) << index++ << QString::fromLatin1(item);
    }

    void theItemsOfADefaultRecord()
    {
        QFETCH(int, index);
        const QJsonObject profile = generated(EditorXmlData());
        QCOMPARE(payloadOf(profile)[QLatin1String("Preferences")].toArray().size(),
                 SettingOracle::preferenceKeys().size());
        QTEST(preferenceOf(profile, index), "preference");
    }

    void everyItemFollowsItsSetting()
    {
        const QJsonObject profile = generated(RecordSamples::everythingChanged());
        QCOMPARE(preferenceOf(profile, 0), QStringLiteral(R"({"Mode":"0","Text":"StartPage"})"));
        QCOMPARE(preferenceOf(profile, 1), QStringLiteral(R"({"Disable":"1","Text":"Advertise"})"));
        QCOMPARE(preferenceOf(profile, 2), QStringLiteral(R"({"Mode":1,"Text":"bMIPCheckPolicyOnDocSave"})"));
        QCOMPARE(preferenceOf(profile, 3), QStringLiteral(R"({"Mode":"1","Text":"AuthLibrary"})"));
        QCOMPARE(
            preferenceOf(profile, 4),
            QStringLiteral(
                R"({"BuiltInPermList":"version:1|.ade:3|.app:3","DisableOpenSaveFileAttach":"2","Mode":"1","Text":"DefaultLaunchAttachmentPerms"})"));
        QCOMPARE(preferenceOf(profile, 7), QStringLiteral(R"({"String":"2","Text":"LoginDomain"})"));
        const QJsonObject plugin = payloadOf(profile)[QLatin1String("Plugins")]
                                       .toArray()
                                       .first()[QLatin1String("Plugin")]
                                       .toObject();
        QCOMPARE(plugin.size(), 2);
        QCOMPARE(plugin[QLatin1String("Text")].toString(), QStringLiteral("Plugin"));
        QCOMPARE(plugin[QLatin1String("UnloadPluginArray")].toString(), QStringLiteral("PelixOcr.dylib;"));
    }

    void theRibbonElementsAreWrapped()
    {
        const QJsonObject payload = payloadOf(generated(RecordSamples::everythingChanged()));
        const QJsonValue ribbon =
            payload[QLatin1String("RibbonSetRibbonCategory")][QLatin1String("RibbonUI")];
        QCOMPARE(ribbon[QLatin1String("Category")][QLatin1String("Text")].toString(), QStringLiteral("Home"));
        const QJsonValue bar =
            payload[QLatin1String("RibbonSetTabElements")][QLatin1String("QuickAccessBar")];
        QCOMPARE(bar[QLatin1String("control")][QLatin1String("action")].toString(), QStringLiteral("A"));
    }

    void authLibrary2IsWrittenAs0AndReadsBackAs0()
    {
        EditorXmlData data;
        data.nAuthLibrary = 2;
        const QByteArray profile = CocoaCalls::generateProfile(&data, true).toUtf8();
        QCOMPARE(preferenceOf(readByPython(profile), 3),
                 QStringLiteral(R"({"Mode":"0","Text":"AuthLibrary"})"));
        QVERIFY(CocoaCalls::importProfile(&data, profile, true));
        QCOMPARE(data.nAuthLibrary, 0);
    }

    void anUnsetPolicyIsTheEmptyTextAndReadsBackAsSetWith0()
    {
        const EditorXmlData unset;
        const QByteArray profile = CocoaCalls::generateProfile(&unset, true).toUtf8();
        EditorXmlData data;
        QVERIFY(CocoaCalls::importProfile(&data, profile, true));
        QVERIFY(data.bMIPCheckPolicySet);
        QCOMPARE(data.nMIPCheckPolicyOnDocSave, 0);
    }

    void twoGenerationsDifferInTheInnerUuidOnly()
    {
        const EditorXmlData data = RecordSamples::everythingChanged();
        const QString first = CocoaCalls::generateProfile(&data, true);
        const QString second = CocoaCalls::generateProfile(&data, true);
        QVERIFY(first != second);
        QCOMPARE(withoutInnerUuid(first), withoutInnerUuid(second));
        QCOMPARE(withoutInnerUuid(first).count(QStringLiteral("UUID</string>")), 1);
    }

    void whatNoProfileCanHoldIsNotGenerated_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("control character") << QStringLiteral("a\u0001b");
        QTest::newRow("NUL") << QString(QChar(0));
        QTest::newRow("U+FFFE") << QString(QChar(0xfffe));
        QTest::newRow("first half of a pair") << QString(QChar(0xd83d));
        QTest::newRow("second half of a pair") << QString(QChar(0xde00));
        QTest::newRow("both halves, the wrong way round") << QString(QChar(0xde00)) + QChar(0xd83d);
    }

    void whatNoProfileCanHoldIsNotGenerated()
    {
        QFETCH(QString, text);
        const auto ribbon = [](EditorXmlData &data) {
            data.elemRibbonCategory = RecordSamples::element("<RibbonUI><a><b/></a></RibbonUI>");
            return data.elemRibbonCategory.firstChildElement().firstChildElement();
        };
        const QList<std::function<void(EditorXmlData &)>> places = {
            [&](EditorXmlData &data) { data.strLoginDomainList = text; },
            [&](EditorXmlData &data) { data.strUnloadPluginArray = text; },
            [&](EditorXmlData &data) { data.payloadInfo.PayloadIdentifier = text; },
            [&](EditorXmlData &data) { data.payloadInfo.PayloadUUID = text; },
            [&](EditorXmlData &data) { ribbon(data).setAttribute(QStringLiteral("x"), text); },
            [&](EditorXmlData &data) {
                QDomElement inner = ribbon(data);
                inner.appendChild(inner.ownerDocument().createTextNode(text));
            }};
        for (const auto &place : places) {
            EditorXmlData data;
            place(data);
            QVERIFY(CocoaCalls::generateProfile(&data, true).isNull());
        }
    }

    void whatAProfileBringsStands()
    {
        const QString text = QStringLiteral("a\u0001b\tä");
        const QByteArray list = "{PayloadContent=({PayloadIdentifier=\"" + editorBundle +
                                "\";Preferences=({Preference={Text=LoginDomainList;String=\"a\001b\tä\";};});"
                                "RibbonSetRibbonCategory={RibbonUI={x=\"a\001b\tä\";};};});}";
        EditorXmlData data;
        QVERIFY(CocoaCalls::importProfile(&data, list, true));
        QCOMPARE(data.strLoginDomainList, text);
        QCOMPARE(data.elemRibbonCategory.attribute(QStringLiteral("x")), text);
    }

    void whatCouldNotBeReadAgainIsNotGenerated()
    {
        EditorXmlData data;
        data.elemRibbonCategory =
            RecordSamples::element(QByteArray("<a>").repeated(300) + QByteArray("</a>").repeated(300));
        QVERIFY(CocoaCalls::generateProfile(&data, true).isNull());
    }

    void otherProgramsReadTheProfile()
    {
        const QTemporaryDir folder;
        const EditorXmlData data = RecordSamples::everythingChanged();
        const QString path = folder.filePath(QStringLiteral("a.mobileconfig"));
        TestFiles::write(path, CocoaCalls::generateProfile(&data, true).toUtf8());
        const QString grammar = QStringLiteral(PCT_PROPERTY_LIST_GRAMMAR);
        TestFiles::outputOf(QStringLiteral("xmllint"), {QStringLiteral("--noout"), QStringLiteral("--nonet"),
                                                        QStringLiteral("--relaxng"), grammar, path});
        const QByteArray binary =
            TestFiles::outputOf(QStringLiteral("plistutil"),
                                {QStringLiteral("-i"), path, QStringLiteral("-f"), QStringLiteral("bin")});
        QVERIFY(binary.startsWith("bplist00"));
        QCOMPARE(readByPython(binary), readByPython(TestFiles::read(path)));
    }

    void parsingCollectsWhatTheGroupsHold()
    {
        const QByteArray groups = propertyList(
            dictionary({"_computerlevel", array(dictionary({}) + dictionary({})), "someone", dictionary({}),
                        "text", string("ignored"), "number", "<integer>1</integer>"}));
        QCOMPARE(CocoaCalls::parsePlistXML(QString::fromUtf8(groups)).count, 3);
    }

    void valuesThatAreNeitherArraysNorDictionariesAreNoProfileInfo()
    {
        const auto result = CocoaCalls::parsePlistXML(
            QString::fromUtf8(propertyList(dictionary({"a", string("x"), "b", "<true/>"}))));
        QCOMPARE(result.count, -1);
        QCOMPARE(result.domain, QStringLiteral("com.pelix-software.Pelix.PDF"));
        QCOMPARE(result.code, 1001);
        QCOMPARE(result.description, QStringLiteral("no profile info"));
    }

    void whatIsNoDictionaryIsAnError_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << QString();
        QTest::newRow("a sentence") << QStringLiteral("There are no configuration profiles installed");
        QTest::newRow("a word") << QStringLiteral("nothing");
        QTest::newRow("an array") << QString::fromUtf8(propertyList(array(dictionary({}))));
        QTest::newRow("truncated") << QString::fromUtf8(listing(dictionary({})).left(90));
    }

    void whatIsNoDictionaryIsAnError()
    {
        QFETCH(QString, text);
        const auto result = CocoaCalls::parsePlistXML(text);
        QCOMPARE(result.count, -1);
        QVERIFY(!result.description.isEmpty());
        QVERIFY(result.description != QStringLiteral("no profile info"));
    }

    void aProfileOfTheOtherProductIsRefused()
    {
        EditorXmlData data;
        QVERIFY(!CocoaCalls::importProfile(&data, profileFile(readerBundle), true));
        QVERIFY(!CocoaCalls::importProfile(&data, profileFile(editorBundle), false));
        QVERIFY(data == EditorXmlData());
        QVERIFY(CocoaCalls::importProfile(&data, profileFile(readerBundle), false));
    }

    void aFileFillsTheWholeIdentity()
    {
        EditorXmlData data;
        QVERIFY(CocoaCalls::importProfile(&data, profileFile(editorBundle), true));
        const ProfilePayloadInfo expected = {QStringLiteral("A name"), QStringLiteral("host.1"),
                                             QStringLiteral("U-1"), QStringLiteral("Org"),
                                             QStringLiteral("What for")};
        QVERIFY(data.payloadInfo == expected);
    }

    void missingSettingsStayAndRibbonElementsAreReplaced()
    {
        EditorXmlData data = RecordSamples::everythingChanged();
        QVERIFY(CocoaCalls::importProfile(&data, profileFile(editorBundle), true));
        EditorXmlData expected = RecordSamples::everythingChanged();
        expected.payloadInfo = data.payloadInfo;
        expected.elemRibbonCategory = RecordSamples::element("<RibbonUI/>");
        expected.elemQuickAccessBar = RecordSamples::element("<QuickAccessBar/>");
        QVERIFY(data == expected);
    }

    void nothingToImportFromIsRefused()
    {
        EditorXmlData data;
        QVERIFY(!CocoaCalls::importProfile(nullptr, profileFile(editorBundle), true));
        QVERIFY(!CocoaCalls::importProfile(&data, QByteArray(), true));
        QVERIFY(!CocoaCalls::importProfiles(nullptr, listing(dictionary({})), true));
        QVERIFY(!CocoaCalls::importProfiles(&data, "", true));
        QVERIFY(data == EditorXmlData());
    }

    void theFirstInstalledMatchIsTaken()
    {
        const auto settings = [](const QByteArray &domain) {
            return dictionary(
                {"Preferences", array(preference("LoginDomainList", {"String", string(domain)}))});
        };
        const QByteArray groups =
            listing(installedProfile(readerBundle, "r.1", "UR", settings("reader.example")) +
                    installedProfile(editorBundle, "e.1", "UE", settings("first.example")) +
                    installedProfile(editorBundle, "e.2", "UF", settings("second.example")));
        EditorXmlData data;
        QVERIFY(CocoaCalls::importProfiles(&data, groups, true));
        QCOMPARE(data.strLoginDomainList, QStringLiteral("first.example"));
        const ProfilePayloadInfo expected = {QStringLiteral("Installed name"), QStringLiteral("e.1"),
                                             QStringLiteral("UE"), QStringLiteral("Installed org"),
                                             QStringLiteral("Installed for")};
        QVERIFY(data.payloadInfo == expected);
    }

    void everyItemOfTheMatchFillsTheRecord()
    {
        const auto item = [](const QByteArray &identifier, const QByteArray &text) {
            return dictionary({"PayloadIdentifier", string(identifier), "PayloadContent",
                               dictionary({"Preferences", array(preference(text, {"Mode", string("1")}))})});
        };
        const QByteArray profile = dictionary(
            {"ProfileItems", array(item("other", "HideMyApps") + item(editorBundle, "SupportExtSSO"))});
        EditorXmlData data;
        QVERIFY(CocoaCalls::importProfiles(&data, listing(profile), true));
        QVERIFY(data.bHideMyApps);
        QVERIFY(data.bSupportExtSSO);
    }

    void noInstalledMatchLeavesTheRecord()
    {
        EditorXmlData data;
        const QByteArray groups = listing(installedProfile(readerBundle, "r.1", "UR", dictionary({})));
        QVERIFY(!CocoaCalls::importProfiles(&data, groups, true));
        QVERIFY(data == EditorXmlData());
    }
};

QTEST_GUILESS_MAIN(tst_ConfigGenerator)
#include "tst_ConfigGenerator.moc"
