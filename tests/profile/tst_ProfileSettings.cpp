// SPDX-License-Identifier: Apache-2.0
#include "config/Settings.h"
#include "tests/config/RecordSamples.h"
#include "tests/config/SettingOracle.h"
#include "tests/profile/CocoaCalls.h"
#include "tests/profile/ProfileSamples.h"

#include <QJsonArray>
#include <QtTest>

using namespace ProfileSamples;

namespace {

using SettingOracle::Change;
using SettingOracle::valuesOfTheDefaults;

/// The values of a profile, each under its item's key and its own.
using Values = QMap<QString, QJsonValue>;

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

} // namespace

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
        for (const Setting &setting : settings())
            QVERIFY2(sameValue(setting, read, expected), setting.name.data());
    }

private:
    static void addRows();
};

void tst_ProfileSettings::addRows()
{
    QTest::addColumn<QString>("where");
    QTest::addColumn<QJsonValue>("value");
    QTest::addColumn<Change>("change");
    for (const SettingOracle::Row &row : SettingOracle::rows()) {
        if (!row.value.isUndefined())
            QTest::newRow(row.name) << QString::fromLatin1(row.place) << row.value << row.change;
    }
}

QTEST_GUILESS_MAIN(tst_ProfileSettings)
#include "tst_ProfileSettings.moc"
