// SPDX-License-Identifier: Apache-2.0
#include "profile/CProfileGenerator.h"
#include "tests/config/RecordSamples.h"
#include "tests/profile/LogLines.h"
#include "tests/profile/ProfileSamples.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

using namespace ProfileSamples;

namespace {

constexpr int depth = 100000;

const QString notParsed = QStringLiteral("warning Failed to parse profile : ");

QByteArray nested(const QByteArray &open, const QByteArray &close)
{
    return profileFile(editorBundle, "<key>RibbonSetRibbonCategory</key>" + open.repeated(depth) + "<true/>" +
                                         close.repeated(depth));
}

/// Ten uses of ten uses of … of ten characters.
QByteArray entityBomb()
{
    QByteArray entities = "<!DOCTYPE plist [<!ENTITY e0 \"0123456789\">";
    for (int i = 1; i < 12; ++i) {
        const QByteArray use = "&e" + QByteArray::number(i - 1) + ";";
        entities += "<!ENTITY e" + QByteArray::number(i) + " \"" + use.repeated(10) + "\">";
    }
    return QByteArray(profileFile(editorBundle))
        .replace("<plist", QByteArray(entities + "]><plist"))
        .replace("Org", "&e11;");
}

/// A profile with the value under every key that a setting or the identity has.
QByteArray profileOf(const QByteArray &value)
{
    QByteArray items;
    for (const auto *name :
         {"StartPage", "Advertise", "bMIPCheckPolicyOnDocSave", "AuthLibrary", "DefaultLaunchAttachmentPerms",
          "HideMyApps", "iManage10loginMethod", "LoginDomain", "LoginDomainList", "SupportExtSSO"})
        items += preference(name, {"Mode", value, "Disable", value, "UseOAuth2", value, "String", value,
                                   "BuiltInPermList", value, "DisableOpenSaveFileAttach", value});
    const QByteArray plugin =
        dictionary({"Plugin", dictionary({"Text", string("Plugin"), "UnloadPluginArray", value})});
    const QByteArray payload =
        dictionary({"PayloadIdentifier", string(editorBundle), "Preferences", array(items), "Plugins",
                    array(plugin), "RibbonSetRibbonCategory", dictionary({"RibbonUI", value}),
                    "RibbonSetTabElements", dictionary({"QuickAccessBar", value})});
    return propertyList(dictionary({"PayloadDisplayName", value, "PayloadIdentifier", value, "PayloadUUID",
                                    value, "PayloadOrganization", value, "PayloadDescription", value,
                                    "PayloadContent", array(payload)}));
}

/// What a record becomes when each number in a profile is `integer` and each text is `text`.
EditorXmlData recordOf(int integer, const QString &text)
{
    EditorXmlData data;
    const bool isSet = integer != 0;
    for (bool EditorXmlData::*flag : {&EditorXmlData::bShowStartPage, &EditorXmlData::bRemoveAdvertise,
                                      &EditorXmlData::bDisableOpenFileAll, &EditorXmlData::bHideMyApps,
                                      &EditorXmlData::bUseOAuth2, &EditorXmlData::bSupportExtSSO})
        data.*flag = isSet;
    data.bMIPCheckPolicySet = true;
    data.nMIPCheckPolicyOnDocSave = integer;
    data.nAuthLibrary = integer == 1 ? 1 : 0;
    data.nFileAttachmentsMode = integer;
    for (QString EditorXmlData::*member :
         {&EditorXmlData::strBuiltInPermList, &EditorXmlData::strLoginDomain,
          &EditorXmlData::strLoginDomainList, &EditorXmlData::strUnloadPluginArray})
        data.*member = text;
    data.payloadInfo = {text, text, text, text, text};
    return data;
}

} // namespace

/// Profile files that no honest tool has written, opened as the window opens them.
class tst_HostileProfiles : public QObject
{
    Q_OBJECT

private slots:
    void whatIsRefusedLeavesTheRecordAndTheFile_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("line");
        const QByteArray good = profileFile(editorBundle);
        QTest::newRow("not a property list") << QByteArray("Hello, this is a letter.\n") << notParsed;
        for (const int part : {2, 3, 10})
            QTest::addRow("truncated, one %dth", part) << good.left(good.size() / part) << notParsed;
        QTest::newRow("dictionaries nested 100,000 deep")
            << nested("<dict><key>a</key>", "</dict>") << notParsed;
        QTest::newRow("arrays nested 100,000 deep") << nested("<array>", "</array>") << notParsed;
        QTest::newRow("old-style arrays nested 100,000 deep")
            << QByteArray(depth, '(') + QByteArray(depth, ')') << notParsed;
        QTest::newRow("an entity bomb") << entityBomb() << notParsed;
        QTest::newRow("no PayloadContent")
            << propertyList(dictionary({"PayloadType", string("Configuration")})) << QString();
        QTest::newRow("an empty PayloadContent")
            << propertyList(dictionary({"PayloadContent", array("")})) << QString();
        QTest::newRow("NUL bytes inside")
            << good.left(200) + QByteArray(3, '\0') + good.mid(200) << notParsed;
        QTest::newRow("NUL bytes in front") << QByteArray(4, '\0') + good << notParsed;
        QTest::newRow("NUL bytes only") << QByteArray(4096, '\0') << notParsed;
    }

    void whatIsRefusedLeavesTheRecordAndTheFile()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, line);
        TestFiles::write(m_path, bytes);
        EditorXmlData data = RecordSamples::everythingChanged();
        const LogLines log;
        QVERIFY(!CProfileGenerator::ImportProfile(m_path, &data, true));
        QVERIFY2(line.isEmpty() || log.has(line), qPrintable(log.all()));
        QVERIFY(data == RecordSamples::everythingChanged());
        QCOMPARE(TestFiles::read(m_path), bytes);
        QCOMPARE(QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 QStringList(QStringLiteral("input.mobileconfig")));
    }

    void aSignedProfileIsNotParsed()
    {
        TestFiles::write(m_path, QByteArray("\x30\x82\x10\x00\x06\x09*\x86H\x86\xf7", 11) +
                                     profileFile(editorBundle));
        EditorXmlData data;
        const LogLines log;
        QVERIFY(!CProfileGenerator::ImportProfile(m_path, &data, true));
        QVERIFY2(log.has(notParsed), qPrintable(log.all()));
        QVERIFY(data == EditorXmlData());
    }

    void anyTypeIsTakenForEveryKey_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<int>("integer");
        QTest::addColumn<QString>("text");
        QTest::newRow("text") << QByteArray("<string>x</string>") << 0 << QStringLiteral("x");
        QTest::newRow("digits") << QByteArray("<string>1</string>") << 1 << QStringLiteral("1");
        QTest::newRow("integer") << QByteArray("<integer>-7</integer>") << -7 << QStringLiteral("-7");
        QTest::newRow("real") << QByteArray("<real>2.5</real>") << 2 << QStringLiteral("2.5");
        QTest::newRow("true") << QByteArray("<true/>") << 1 << QStringLiteral("1");
        QTest::newRow("false") << QByteArray("<false/>") << 0 << QStringLiteral("0");
        QTest::newRow("data") << QByteArray("<data>MQ==</data>") << 0 << QString();
        QTest::newRow("date") << QByteArray("<date>2026-01-02T03:04:05Z</date>") << 0 << QString();
        QTest::newRow("array") << array(string("1")) << 0 << QString();
        QTest::newRow("empty array") << array("") << 0 << QString();
        QTest::newRow("dictionary") << dictionary({}) << 0 << QString();
    }

    void anyTypeIsTakenForEveryKey()
    {
        QFETCH(QByteArray, value);
        QFETCH(int, integer);
        QFETCH(QString, text);
        TestFiles::write(m_path, profileOf(value));
        EditorXmlData data;
        QVERIFY(CProfileGenerator::ImportProfile(m_path, &data, true));
        EditorXmlData expected = recordOf(integer, text);
        expected.elemRibbonCategory = RecordSamples::element("<RibbonUI/>");
        expected.elemQuickAccessBar = RecordSamples::element("<QuickAccessBar/>");
        QVERIFY(data == expected);
        QCOMPARE(TestFiles::read(m_path), profileOf(value));
    }

    void ofSeveralPayloadsTheFirstCounts()
    {
        const auto payload = [](const QByteArray &bundle) {
            return dictionary({"PayloadIdentifier", string(bundle)});
        };
        TestFiles::write(m_path, propertyList(dictionary({"PayloadContent", array(payload(readerBundle) +
                                                                                  payload(editorBundle))})));
        EditorXmlData data;
        QVERIFY(!CProfileGenerator::ImportProfile(m_path, &data, true));
        QVERIFY(data == EditorXmlData());
        QVERIFY(CProfileGenerator::ImportProfile(m_path, &data, false));
    }

    void ofEqualKeysTheLastCounts()
    {
        const auto domains = [](const QByteArray &first, const QByteArray &last) {
            return preference("LoginDomainList", {"String", string(first), "String", string(last)});
        };
        const QByteArray payload =
            dictionary({"PayloadIdentifier", string(readerBundle), "PayloadIdentifier", string(editorBundle),
                        "Preferences", array(domains("a", "b")), "Preferences", array(domains("c", "d"))});
        TestFiles::write(m_path, propertyList(dictionary({"PayloadUUID", string("U1"), "PayloadUUID",
                                                          string("U2"), "PayloadContent", array(""),
                                                          "PayloadContent", array(payload)})));
        EditorXmlData data;
        QVERIFY(CProfileGenerator::ImportProfile(m_path, &data, true));
        QCOMPARE(data.payloadInfo.PayloadUUID, QStringLiteral("U2"));
        QCOMPARE(data.strLoginDomainList, QStringLiteral("d"));
    }

private:
    QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath(QStringLiteral("input.mobileconfig"));
};

QTEST_GUILESS_MAIN(tst_HostileProfiles)
#include "tst_HostileProfiles.moc"
