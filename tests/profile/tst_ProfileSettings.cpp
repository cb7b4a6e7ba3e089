// SPDX-License-Identifier: Apache-2.0
#include "config/RecordFields.h"
#include "tests/config/RecordSamples.h"
#include "tests/profile/CocoaCalls.h"
#include "tests/profile/ProfileSamples.h"

#include <QJsonArray>
#include <QtTest>

#include <functional>

using namespace ProfileSamples;

namespace {

using Change = std::function<void(EditorXmlData &)>;

/// The values of a profile, each under its item's key and its own.
using Values = QMap<QString, QJsonValue>;

Values valuesOfTheDefaults()
{
    return {{QStringLiteral("StartPage Mode"), QStringLiteral("1")},
            {QStringLiteral("Advertise Disable"), QStringLiteral("0")},
            {QStringLiteral("bMIPCheckPolicyOnDocSave Mode"), QString()},
            {QStringLiteral("AuthLibrary Mode"), QStringLiteral("0")},
            {QStringLiteral("DefaultLaunchAttachmentPerms Mode"), QStringLiteral("0")},
            {QStringLiteral("DefaultLaunchAttachmentPerms BuiltInPermList"), QString()},
            {QStringLiteral("DefaultLaunchAttachmentPerms DisableOpenSaveFileAttach"), QStringLiteral("-1")},
            {QStringLiteral("HideMyApps Mode"), QStringLiteral("0")},
            {QStringLiteral("iManage10loginMethod UseOAuth2"), QStringLiteral("0")},
            {QStringLiteral("LoginDomain String"), QStringLiteral("1")},
            {QStringLiteral("LoginDomainList String"), QString()},
            {QStringLiteral("SupportExtSSO Mode"), QStringLiteral("0")},
            {QStringLiteral("Plugin UnloadPluginArray"), QString()}};
}

/// Every value of the items but their key.
Values valuesOf(const QJsonObject &profile)
{
    Values values;
    const QJsonObject payload = payloadOf(profile);
    for (const auto &[list, member] : {std::pair{"Preferences", "Preference"}, {"Plugins", "Plugin"}}) {
        for (const QJsonValue &entry : payload[QLatin1String(list)].toArray()) {
            const QJsonObject item = entry[QLatin1String(member)].toObject();
            for (auto value = item.begin(); value != item.end(); ++value) {
                if (value.key() != QLatin1String("Text"))
                    values.insert(item[QLatin1String("Text")].toString() + QLatin1Char(' ') + value.key(),
                                  value.value());
            }
        }
    }
    return values;
}

QByteArray xmlOf(const QJsonValue &value)
{
    if (value.isString())
        return string(value.toString().toUtf8());
    return "<integer>" + QByteArray::number(value.toInt()) + "</integer>";
}

/// A settings payload with one item for each key.
QByteArray settingsWith(const Values &values)
{
    QMap<QString, QByteArray> items;
    for (auto value = values.begin(); value != values.end(); ++value)
        items[value.key().section(QLatin1Char(' '), 0, 0)] +=
            "<key>" + value.key().section(QLatin1Char(' '), 1).toUtf8() + "</key>" + xmlOf(value.value());
    QByteArray preferences;
    for (auto item = items.begin(); item != items.end(); ++item) {
        if (item.key() != QLatin1String("Plugin"))
            preferences += dictionary({"Preference", "<dict><key>Text</key>" + string(item.key().toUtf8()) +
                                                         item.value() + "</dict>"});
    }
    const QByteArray plugin =
        "<dict><key>Text</key>" + string("Plugin") + items.value(QStringLiteral("Plugin")) + "</dict>";
    return propertyList(
        dictionary({"Preferences", array(preferences), "Plugins", array(dictionary({"Plugin", plugin}))}));
}

void addRow(const char *name, const char *keys, const QJsonValue &value, const Change &change)
{
    QTest::newRow(name) << QString::fromLatin1(keys) << value << change;
}

} // namespace

Q_DECLARE_METATYPE(Change)

/// Each setting differs alone, so that none can stand in another's place.
class tst_ProfileSettings : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLoggingCategory::setFilterRules(QStringLiteral("pct.*.debug=false")); }

    void theDefaultsAreGenerated()
    {
        const EditorXmlData data;
        QCOMPARE(valuesOf(readByPython(CocoaCalls::generateProfile(&data, true).toUtf8())),
                 valuesOfTheDefaults());
    }

    void aSettingIsGeneratedInItsPlaceAlone_data() { addRows(); }
    void aSettingIsGeneratedInItsPlaceAlone()
    {
        QFETCH(QString, where);
        QFETCH(QJsonValue, value);
        QFETCH(Change, change);
        EditorXmlData data;
        change(data);
        Values expected = valuesOfTheDefaults();
        QVERIFY(expected.value(where) != value);
        expected[where] = value;
        QCOMPARE(valuesOf(readByPython(CocoaCalls::generateProfile(&data, true).toUtf8())), expected);
    }

    void aSettingIsReadFromItsPlaceAlone_data() { addRows(); }
    void aSettingIsReadFromItsPlaceAlone()
    {
        QFETCH(QString, where);
        QFETCH(QJsonValue, value);
        QFETCH(Change, change);
        Values values = valuesOfTheDefaults();
        values[where] = value;
        EditorXmlData read;
        CocoaCalls::fillContent(read, settingsWith(values));
        EditorXmlData expected;
        expected.bMIPCheckPolicySet = true; // the empty text of the defaults
        expected.nMIPCheckPolicyOnDocSave = 0;
        expected.elemRibbonCategory = RecordSamples::element("<RibbonUI/>");
        expected.elemQuickAccessBar = RecordSamples::element("<QuickAccessBar/>");
        change(expected);
        for (const RecordField &field : recordFields())
            QVERIFY2(sameValue(field, read, expected), field.name.data());
    }

private:
    static void addRows();
};

void tst_ProfileSettings::addRows()
{
    QTest::addColumn<QString>("where");
    QTest::addColumn<QJsonValue>("value");
    QTest::addColumn<Change>("change");
    addRow("bShowStartPage", "StartPage Mode", QStringLiteral("0"),
           [](auto &data) { data.bShowStartPage = false; });
    addRow("bRemoveAdvertise", "Advertise Disable", QStringLiteral("1"),
           [](auto &data) { data.bRemoveAdvertise = true; });
    addRow("MIP policy", "bMIPCheckPolicyOnDocSave Mode", 1, [](auto &data) {
        data.bMIPCheckPolicySet = true;
        data.nMIPCheckPolicyOnDocSave = 1;
    });
    addRow("nAuthLibrary", "AuthLibrary Mode", QStringLiteral("1"),
           [](auto &data) { data.nAuthLibrary = 1; });
    addRow("bDisableOpenFileAll", "DefaultLaunchAttachmentPerms Mode", QStringLiteral("1"),
           [](auto &data) { data.bDisableOpenFileAll = true; });
    addRow("strBuiltInPermList", "DefaultLaunchAttachmentPerms BuiltInPermList",
           QStringLiteral("version:1|.ade:3"),
           [](auto &data) { data.strBuiltInPermList = QStringLiteral("version:1|.ade:3"); });
    addRow("nFileAttachmentsMode", "DefaultLaunchAttachmentPerms DisableOpenSaveFileAttach",
           QStringLiteral("2"), [](auto &data) { data.nFileAttachmentsMode = 2; });
    addRow("bHideMyApps", "HideMyApps Mode", QStringLiteral("1"),
           [](auto &data) { data.bHideMyApps = true; });
    addRow("bUseOAuth2", "iManage10loginMethod UseOAuth2", QStringLiteral("1"),
           [](auto &data) { data.bUseOAuth2 = true; });
    addRow("strLoginDomain", "LoginDomain String", QStringLiteral("2"),
           [](auto &data) { data.strLoginDomain = QStringLiteral("2"); });
    addRow("strLoginDomainList", "LoginDomainList String", QStringLiteral("@a.example;@b.example"),
           [](auto &data) { data.strLoginDomainList = QStringLiteral("@a.example;@b.example"); });
    addRow("bSupportExtSSO", "SupportExtSSO Mode", QStringLiteral("1"),
           [](auto &data) { data.bSupportExtSSO = true; });
    addRow("strUnloadPluginArray", "Plugin UnloadPluginArray", QStringLiteral("PelixOcr.dylib;"),
           [](auto &data) { data.strUnloadPluginArray = QStringLiteral("PelixOcr.dylib;"); });
}

QTEST_GUILESS_MAIN(tst_ProfileSettings)
#include "tst_ProfileSettings.moc"
