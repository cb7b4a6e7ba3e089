// SPDX-License-Identifier: Apache-2.0
#include "tests/profile/CocoaCalls.h"
#include "tests/profile/ProfileSamples.h"

#include <QtTest>

using namespace ProfileSamples;

namespace {

/// A value of every type that a property list knows.
const QList<QByteArray> &valuesOfEveryType()
{
    static const QList<QByteArray> values = {
        "<string>1</string>",
        "<string/>",
        "<integer>1</integer>",
        "<real>1.5</real>",
        "<true/>",
        "<false/>",
        "<data>AAEC</data>",
        "<array/>",
        "<date>2026-01-02T03:04:05Z</date>",
        "<dict/>",
        "<real>nan</real>",
        "<array><string>x</string><integer>1</integer></array>",
        "<dict><key>Text</key><string>x</string></dict>",
        "<integer>99999999999999999999</integer>",
    };
    return values;
}

EditorXmlData filledFrom(const QByteArray &settings)
{
    EditorXmlData data;
    CocoaCalls::fillContent(data, propertyList(settings));
    return data;
}

EditorXmlData filledFromItem(const QByteArray &text, const QList<QByteArray> &keysAndValues)
{
    return filledFrom(dictionary({"Preferences", array(preference(text, keysAndValues))}));
}

} // namespace

/// A property list may hold any type anywhere.
class tst_ProfileTypes : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLoggingCategory::setFilterRules(QStringLiteral("pct.*.debug=false")); }

    void integersAreFoundationsIntegerValue_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<int>("expected");
        QTest::newRow("text") << QByteArray("<string>1</string>") << 1;
        QTest::newRow("leading digits") << QByteArray("<string>12 monkeys</string>") << 12;
        QTest::newRow("negative") << QByteArray("<string>-1</string>") << -1;
        QTest::newRow("no digits") << QByteArray("<string>yes</string>") << 0;
        QTest::newRow("integer") << QByteArray("<integer>2</integer>") << 2;
        QTest::newRow("true") << QByteArray("<true/>") << 1;
        QTest::newRow("false") << QByteArray("<false/>") << 0;
        QTest::newRow("real") << QByteArray("<real>2.9</real>") << 2;
        QTest::newRow("beyond an int") << QByteArray("<integer>4294967296</integer>") << INT_MAX;
        QTest::newRow("date") << QByteArray("<date>2026-01-02T03:04:05Z</date>") << 0;
        QTest::newRow("data") << QByteArray("<data>MQ==</data>") << 0;
        QTest::newRow("dictionary") << QByteArray("<dict/>") << 0;
        QTest::newRow("array") << QByteArray("<array/>") << 0;
    }

    void integersAreFoundationsIntegerValue()
    {
        QFETCH(QByteArray, value);
        QFETCH(int, expected);
        QCOMPARE(filledFromItem("DefaultLaunchAttachmentPerms", {"DisableOpenSaveFileAttach", value})
                     .nFileAttachmentsMode,
                 expected);
        QCOMPARE(filledFromItem("bMIPCheckPolicyOnDocSave", {"Mode", value}).nMIPCheckPolicyOnDocSave,
                 expected);
        QCOMPARE(filledFromItem("HideMyApps", {"Mode", value}).bHideMyApps, expected != 0);
        QCOMPARE(filledFromItem("AuthLibrary", {"Mode", value}).nAuthLibrary, expected == 1 ? 1 : 0);
    }

    void textIsAStringOrANumberAsText_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<QString>("expected");
        QTest::newRow("text") << QByteArray("<string>@a.b</string>") << QStringLiteral("@a.b");
        QTest::newRow("integer") << QByteArray("<integer>2</integer>") << QStringLiteral("2");
        QTest::newRow("true") << QByteArray("<true/>") << QStringLiteral("1");
        QTest::newRow("real") << QByteArray("<real>1.5</real>") << QStringLiteral("1.5");
        QTest::newRow("date") << QByteArray("<date>2026-01-02T03:04:05Z</date>") << QString();
        QTest::newRow("data") << QByteArray("<data>MQ==</data>") << QString();
        QTest::newRow("dictionary") << QByteArray("<dict/>") << QString();
        QTest::newRow("array") << QByteArray("<array/>") << QString();
    }

    void textIsAStringOrANumberAsText()
    {
        QFETCH(QByteArray, value);
        QTEST(filledFromItem("LoginDomain", {"String", value}).strLoginDomain, "expected");
    }

    void aPolicyThatIsNotThereIsUnset()
    {
        EditorXmlData data;
        data.bMIPCheckPolicySet = true;
        data.nMIPCheckPolicyOnDocSave = 1;
        CocoaCalls::fillContent(
            data,
            propertyList(dictionary({"Preferences", array(preference("bMIPCheckPolicyOnDocSave", {}))})));
        QVERIFY(!data.bMIPCheckPolicySet);
        QCOMPARE(data.nMIPCheckPolicyOnDocSave, -1);
    }

    void anUnknownItemIsIgnored()
    {
        const EditorXmlData data = filledFromItem("startpage", {"Mode", string("0")});
        QVERIFY(data.bShowStartPage);
    }

    void theLastOfEqualKeysCounts()
    {
        const EditorXmlData data =
            filledFromItem("LoginDomain", {"String", string("1"), "String", string("2")});
        QCOMPARE(data.strLoginDomain, QStringLiteral("2"));
    }

    /// Every key of a settings payload and of a profile gets a value of every type. Whatever comes of it is
    /// a record, never a crash; what is wrong everywhere leaves the record's settings.
    void anyTypeIsTakenForAnyKey_data()
    {
        QTest::addColumn<QByteArray>("value");
        for (const QByteArray &value : valuesOfEveryType())
            QTest::newRow(value.constData()) << value;
    }

    void anyTypeIsTakenForAnyKey()
    {
        QFETCH(QByteArray, value);
        const QByteArray settings =
            dictionary({"Preferences", value, "Plugins", value, "RibbonSetRibbonCategory", value,
                        "RibbonSetTabElements", value});
        QVERIFY(!filledFrom(settings).elemRibbonCategory.isNull());
        const EditorXmlData wrapped =
            filledFrom(dictionary({"Preferences", array(value + dictionary({"Preference", value})), "Plugins",
                                   array(value + dictionary({"Plugin", value})), "RibbonSetRibbonCategory",
                                   dictionary({"RibbonUI", value}), "RibbonSetTabElements",
                                   dictionary({"QuickAccessBar", value})}));
        QVERIFY(wrapped.bShowStartPage && wrapped.strUnloadPluginArray.isEmpty());
        QCOMPARE(wrapped.elemQuickAccessBar.tagName(), QStringLiteral("QuickAccessBar"));
    }

    void aProfileOfAnyTypeIsNoMatch_data() { anyTypeIsTakenForAnyKey_data(); }

    void aProfileOfAnyTypeIsNoMatch()
    {
        QFETCH(QByteArray, value);
        EditorXmlData data;
        const QList<QByteArray> profiles = {
            dictionary({"PayloadContent", value}), dictionary({"PayloadContent", array(value)}),
            dictionary({"PayloadContent", array(dictionary({"PayloadIdentifier", value}))})};
        for (const QByteArray &profile : profiles)
            QVERIFY(!CocoaCalls::importProfile(&data, propertyList(profile), true));
        const QList<QByteArray> installed = {
            value, dictionary({"ProfileItems", value}), dictionary({"ProfileItems", array(value)}),
            dictionary({"ProfileItems", array(dictionary({"PayloadIdentifier", value}))})};
        for (const QByteArray &profile : installed)
            QVERIFY(!CocoaCalls::importProfiles(&data, listing(profile), true));
        QVERIFY(data == EditorXmlData());
    }
};

QTEST_GUILESS_MAIN(tst_ProfileTypes)
#include "tst_ProfileTypes.moc"
