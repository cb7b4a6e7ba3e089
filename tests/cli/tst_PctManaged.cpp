// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/ManagedMac.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

using namespace ManagedReport;
using namespace ProfileXml;

namespace {

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

QString mode(const QJsonObject &profile, const char *item)
{
    return preferenceOf(profile, text(item)).value(text("Mode")).toVariant().toString();
}

} // namespace

/// `pct profile --installed` for a user to whom the system does not list the profiles of the device.
class tst_PctManaged : public QObject
{
    Q_OBJECT

private slots:
    void theManagedPreferencesAreTheSource();
    void thePreferencesOfTheUserGoFirst();
    void theIdentityIsFoundInEverySection_data();
    void theIdentityIsFoundInEverySection();
    void thePayloadsUuidTellsProfilesApart();
    void anUnknownIdentityCannotBeTold_data();
    void anUnknownIdentityCannotBeTold();
    void aGivenIdentityIsEnough();
    void aProfileWithoutReadableValuesCannotBeTold_data();
    void aProfileWithoutReadableValuesCannotBeTold();
    void aListedProfileGoesFirst();
    void withoutAnythingManagedTheMessageSaysWhoSeesTheRest();
    void theStandInReportsWhatIsInstalled();
};

void tst_PctManaged::theManagedPreferencesAreTheSource()
{
    const ManagedMac mac;
    TestFiles::write(mac.preferences(), managedSettings());
    const PctResult made = mac.makeProfile(true, {text("--installed")});
    QVERIFY2(made.exitCode == 0, made.err.constData());
    QVERIFY2(made.err.contains("the settings are those that a management has in force here"),
             made.err.constData());
    const QJsonObject profile = mac.propertyList(mac.output());
    QCOMPARE(profile.value(text("PayloadIdentifier")).toString(), text("office.example"));
    QCOMPARE(profile.value(text("PayloadUUID")).toString(), text("99999999-7777-4888-9999-AAAAAAAAAAAA"));
    QCOMPARE(mode(profile, "StartPage"), text("0"));
    QCOMPARE(mode(profile, "HideMyApps"), text("1"));
    QCOMPARE(mode(profile, "bMIPCheckPolicyOnDocSave"), text("1"));
    QCOMPARE(preferenceOf(profile, text("LoginDomainList")).value(text("String")).toString(),
             text("a.example;b.example"));
    const PctResult asJson = mac.makeProfile(true, {text("--installed"), text("--force"), text("--json")});
    QVERIFY(asJson.out.contains("\"managed-preferences\""));
}

void tst_PctManaged::thePreferencesOfTheUserGoFirst()
{
    const ManagedMac mac;
    const QString user = QString::fromUtf8(TestFiles::outputOf(text("id"), {text("-un")})).trimmed();
    TestFiles::write(mac.preferences(), managedSettings());
    TestFiles::write(mac.preferences(user), managedSettings().replace("a.example;b.example", "user.example"));
    QCOMPARE(mac.makeProfile(true, {text("--installed")}).exitCode, 0);
    QCOMPARE(preferenceOf(mac.propertyList(mac.output()), text("LoginDomainList"))
                 .value(text("String"))
                 .toString(),
             text("user.example"));
}

void tst_PctManaged::theIdentityIsFoundInEverySection_data()
{
    QTest::addColumn<QByteArray>("xml");
    const QByteArray ours = reportedProfile("office.example", {reportedPayload(domain, payloadUuid)});
    const QByteArray other = reportedProfile("other.example", {reportedPayload("org.example.viewer", "x")});
    QTest::newRow("device only") << report({section(device, {other, ours})});
    QTest::newRow("user only") << report({section("User Configuration Profiles (501)", {ours})});
    QTest::newRow("device behind user")
        << report({section("User Configuration Profiles (501)", {other}), section(device, {ours})});
    QTest::newRow("without sections") << report({other, ours});
    QTest::newRow("second payload") << report(
        {section(device, {reportedProfile("office.example", {reportedPayload("org.example.viewer", "x"),
                                                             reportedPayload(domain, payloadUuid)})})});
    QTest::newRow("wrapped by the management") << report({section(
        device,
        {reportedProfile("office.example",
                         {reportedPayload("com.apple.ManagedClient.preferences", "x",
                                          "{\n    \"" + domain + "\" = { Forced = ( { } ); };\n}")})})});
}

void tst_PctManaged::theIdentityIsFoundInEverySection()
{
    QFETCH(QByteArray, xml);
    const ManagedMac mac;
    TestFiles::write(mac.preferences(), managedSettings());
    mac.reportIs(xml);
    const PctResult made = mac.makeProfile(true, {text("--installed")});
    QVERIFY2(made.exitCode == 0, made.err.constData());
    QCOMPARE(mac.propertyList(mac.output()).value(text("PayloadIdentifier")).toString(),
             text("office.example"));
}

void tst_PctManaged::thePayloadsUuidTellsProfilesApart()
{
    const ManagedMac mac;
    TestFiles::write(mac.preferences(), managedSettings());
    mac.reportIs(
        report({section(device, {reportedProfile("old.example", {reportedPayload(domain, "x")}),
                                 reportedProfile("new.example", {reportedPayload(domain, payloadUuid)})})}));
    QCOMPARE(mac.makeProfile(true, {text("--installed")}).exitCode, 0);
    QCOMPARE(mac.propertyList(mac.output()).value(text("PayloadIdentifier")).toString(), text("new.example"));
}

void tst_PctManaged::anUnknownIdentityCannotBeTold_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QByteArray>("reason");
    QTest::newRow("nothing reported") << report({}) << QByteArray("tells of no profile with them");
    QTest::newRow("another application's")
        << report({section(device, {reportedProfile("a", {reportedPayload("org.example.viewer", "x")})})})
        << QByteArray("tells of no profile with them");
    QTest::newRow("several") << report(
                                    {section(device, {reportedProfile("a", {reportedPayload(domain, "x")}),
                                                      reportedProfile("b", {reportedPayload(domain, "y")})})})
                             << QByteArray("tells of 2 profiles with such settings");
    QTest::newRow("damaged") << QByteArray("<plist><array>")
                             << QByteArray("the report of system_profiler cannot be read: ");
    QTest::newRow("a dictionary") << plist(dictionary(QByteArray()))
                                  << QByteArray("it is no list of profiles");
    QTest::newRow("text") << QByteArray("There is nothing to report.")
                          << QByteArray("the report of system_profiler cannot be read: ");
}

void tst_PctManaged::anUnknownIdentityCannotBeTold()
{
    QFETCH(QByteArray, xml);
    QFETCH(QByteArray, reason);
    const ManagedMac mac;
    TestFiles::write(mac.preferences(), managedSettings());
    mac.reportIs(xml);
    const PctResult result = mac.makeProfile(true, {text("--installed")});
    QVERIFY2(result.isOneLineRefusal() && result.err.contains("cannot be told") &&
                 result.err.contains(reason),
             result.err.constData());
    QVERIFY(!QFile::exists(mac.output()));
}

void tst_PctManaged::aGivenIdentityIsEnough()
{
    const ManagedMac mac;
    TestFiles::write(mac.preferences(), managedSettings());
    mac.removeTool(text("system_profiler"));
    const QStringList given{text("--identifier"), text("my.example"), text("--uuid"),
                            QString::fromLatin1(payloadUuid)};
    QVERIFY(mac.makeProfile(true, QStringList{text("--installed")} + given.mid(0, 2)).isOneLineRefusal());
    const PctResult made = mac.makeProfile(true, QStringList{text("--installed")} + given);
    QVERIFY2(made.exitCode == 0, made.err.constData());
    QCOMPARE(mode(mac.propertyList(mac.output()), "StartPage"), text("0"));
}

void tst_PctManaged::aProfileWithoutReadableValuesCannotBeTold_data()
{
    QTest::addColumn<QByteArray>("values");
    QTest::addColumn<QByteArray>("reason");
    QTest::newRow("none") << QByteArray() << QByteArray("not among the managed preferences");
    QTest::newRow("damaged") << QByteArray("<plist><dict>") << QByteArray("settings.plist cannot be read (");
    QTest::newRow("an array") << plist(array(QByteArray())) << QByteArray("settings.plist cannot be read (");
}

void tst_PctManaged::aProfileWithoutReadableValuesCannotBeTold()
{
    QFETCH(QByteArray, values);
    QFETCH(QByteArray, reason);
    const ManagedMac mac;
    if (!values.isEmpty())
        TestFiles::write(mac.preferences(), values);
    const PctResult result = mac.makeProfile(true, {text("--installed")});
    QVERIFY2(result.isOneLineRefusal() && result.err.contains("cannot be told") &&
                 result.err.contains(reason),
             result.err.constData());
}

void tst_PctManaged::aListedProfileGoesFirst()
{
    const ManagedMac mac;
    TestFiles::write(mac.preferences(), managedSettings());
    mac.restoreTool(text("profiles"));
    TestFiles::write(mac.file(text("listed")),
                     ProfileXml::profile(payload(preference("StartPage", key("Mode", string("1"))))));
    mac.install(mac.file(text("listed")));
    const PctResult made = mac.makeProfile(true, {text("--installed")});
    QVERIFY2(made.exitCode == 0 && made.err.isEmpty(), made.err.constData());
    QCOMPARE(mode(mac.propertyList(mac.output()), "StartPage"), text("1"));
}

void tst_PctManaged::withoutAnythingManagedTheMessageSaysWhoSeesTheRest()
{
    const ManagedMac mac;
    mac.reportIs(report({}));
    const PctResult result = mac.makeProfile(true, {text("--installed")});
    QVERIFY2(result.isOneLineRefusal() &&
                 result.err.contains("no profile of the Pelix PDF Editor was found") &&
                 result.err.contains("those of the device are listed for root only"),
             result.err.constData());
    TestFiles::write(mac.preferences(), managedSettings());
    QVERIFY(mac.makeProfile(false, {text("--installed")}).isOneLineRefusal());
}

void tst_PctManaged::theStandInReportsWhatIsInstalled()
{
    const ManagedMac mac;
    mac.restoreTool(text("profiles"));
    TestFiles::write(mac.file(text("listed")),
                     ProfileXml::profile(payload(preference("StartPage", key("Mode", string("1"))))));
    mac.install(mac.file(text("listed")));
    mac.restoreTool(text("system_profiler"));
    mac.listsNothing();
    TestFiles::write(mac.preferences(), managedSettings());
    const PctResult made = mac.makeProfile(true, {text("--installed")});
    QVERIFY2(made.exitCode == 0, made.err.constData());
    QCOMPARE(mac.propertyList(mac.output()).value(text("PayloadIdentifier")).toString(),
             text("host.example"));
}

QTEST_GUILESS_MAIN(tst_PctManaged)
#include "tst_PctManaged.moc"
