// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/ProfileRunner.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

using namespace ProfileXml;

namespace {

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

const QByteArray domain = "com.pelix-software.Pelix.PDF.Editor.settings";
const QByteArray payloadUuid = "11111111-2222-4333-8444-555555555555";

const char *const nothingForTheUser =
    "echo \"There are no configuration profiles installed for user 'jane'\"";

QByteArray entry(const QByteArray &name, const QByteArray &further, const QList<QByteArray> &items = {})
{
    QByteArray text = key("_name", string(name)) + further;
    if (!items.isEmpty())
        text += key("_items", array(items.join()));
    return dictionary(text);
}

QByteArray property(const QByteArray &name, const QByteArray &value)
{
    return key("spconfigprofile_" + name, string(value));
}

QByteArray reportedPayload(const QByteArray &type, const QByteArray &uuid, const QByteArray &data = "{ }")
{
    return entry(type, property("payload_identifier", "an.identifier") + property("payload_uuid", uuid) +
                           property("payload_data", data));
}

QByteArray reportedProfile(const QByteArray &identifier, const QList<QByteArray> &payloads)
{
    return entry("Office profile",
                 property("profile_identifier", identifier) +
                     property("profile_uuid", "99999999-7777-4888-9999-AAAAAAAAAAAA") +
                     property("organization", "Example") + property("description", "All Macs") +
                     property("install_source", "MDM") + property("verification_state", "verified"),
                 payloads);
}

QByteArray section(const QByteArray &name, const QList<QByteArray> &profiles)
{
    return entry(name, QByteArray(), profiles);
}

/// The whole report, with the header that the system puts in front.
QByteArray report(const QList<QByteArray> &sections)
{
    return plist(array(dictionary(key("_SPCommandLineArguments", array(string("-xml"))) +
                                  key("_dataType", string("SPConfigurationProfileDataType")) +
                                  key("_items", array(sections.join())) +
                                  key("_versionInfo", dictionary(QByteArray())))));
}

const QByteArray device = "spconfigprofile_section_deviceconfigprofiles";

QByteArray managedSettings()
{
    return plist(dictionary(
        key("PayloadUUID", string(payloadUuid)) + key("_manualProfile", "<false/>") +
        key("Preferences",
            array(preference("StartPage", key("Mode", string("0"))) +
                  preference("HideMyApps", key("Mode", "<true/>")) +
                  preference("bMIPCheckPolicyOnDocSave", key("Mode", "<integer>1</integer>")) +
                  preference("LoginDomainList", key("String", string("a.example;b.example"))))) +
        key("Plugins",
            array(dictionary(key("Plugin", dictionary(key("Text", string("Plugin")) +
                                                      key("UnloadPluginArray", string("one;two")))))))));
}

/// A user of a Mac that a management has set up: `profiles` shows nothing of it.
class ManagedMac : public ProfileRunner
{
public:
    ManagedMac()
    {
        setEnvironment(text("PCT_MANAGED_PREFERENCES"), m_preferences.path());
        replaceTool(text("profiles"), nothingForTheUser);
        reportIs(report(
            {section(device, {reportedProfile("office.example", {reportedPayload(domain, payloadUuid)})})}));
    }

    QString preferences(const QString &user = {}) const
    {
        const QString name = QString::fromLatin1(domain) + text(".plist");
        return m_preferences.filePath(user.isEmpty() ? name : user + QLatin1Char('/') + name);
    }

    void reportIs(const QByteArray &xml) const
    {
        TestFiles::write(file(text("../report.xml")), xml);
        replaceTool(text("system_profiler"), "[ \"$*\" = 'SPConfigurationProfileDataType -xml' ] || exit 64\n"
                                             "cat '" +
                                                 file(text("../report.xml")).toUtf8() + "'");
    }

private:
    QTemporaryDir m_preferences;
};

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
    mac.replaceTool(text("profiles"), nothingForTheUser);
    TestFiles::write(mac.preferences(), managedSettings());
    const PctResult made = mac.makeProfile(true, {text("--installed")});
    QVERIFY2(made.exitCode == 0, made.err.constData());
    QCOMPARE(mac.propertyList(mac.output()).value(text("PayloadIdentifier")).toString(),
             text("host.example"));
}

QTEST_GUILESS_MAIN(tst_PctManaged)
#include "tst_PctManaged.moc"
