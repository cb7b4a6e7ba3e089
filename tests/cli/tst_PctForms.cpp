// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/ProfileRunner.h"
#include "tests/support/TestFiles.h"

#include <QJsonArray>
#include <QRegularExpression>
#include <QtTest>

namespace {

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

const QString domain = text("com.pelix-software.Pelix.PDF.Editor.settings");
const QString managed = text("com.apple.ManagedClient.preferences");

const QStringList identified{text("--identifier"), text("org.example.pelix"), text("--stable")};

QStringList keysOf(const QJsonObject &object)
{
    return object.keys();
}

QStringList settingKeys()
{
    return {text("Plugins"), text("Preferences"), text("RibbonSetRibbonCategory"),
            text("RibbonSetTabElements")};
}

/// The settings that a profile of managed preferences forces.
QJsonObject forcedIn(const QJsonObject &profile)
{
    const QJsonObject domains = payloadOf(profile).value(text("PayloadContent")).toObject();
    const QJsonArray items = domains.value(domain).toObject().value(text("Forced")).toArray();
    return items.at(0).toObject().value(text("mcx_preference_settings")).toObject();
}

/// The settings of an ordinary payload.
QJsonObject bareSettings(QJsonObject payload)
{
    for (const QString &key : payload.keys()) {
        if (key.startsWith(text("Payload")))
            payload.remove(key);
    }
    return payload;
}

/// What Python makes of a text, as a property list when it is put between the two others.
QJsonObject readByPython(const ProfileRunner &runner, const QByteArray &before, const QByteArray &bytes,
                         const QByteArray &behind)
{
    TestFiles::write(runner.file(text("wrapped.plist")), before + bytes + behind);
    return runner.propertyList(runner.file(text("wrapped.plist")));
}

QString uuid5(const QString &script)
{
    return QString::fromLatin1(
               TestFiles::outputOf(QStringLiteral("/usr/bin/python3"),
                                   {QStringLiteral("-c"), QStringLiteral("from uuid import *; print(") +
                                                              script + QLatin1Char(')')}))
        .trimmed()
        .toUpper();
}

} // namespace

/// The forms in which managements take settings: options of `pct profile`, and `pct plist`.
class tst_PctForms : public QObject
{
    Q_OBJECT

private slots:
    void withoutOptionsAProfileIsAsEver();
    void managedPreferencesForceTheSameSettings();
    void whatIsSaidOfAProfileStandsInIt();
    void whatNoProfileCanHoldIsRefused();
    void stableUuidsAreThoseOfPython();
    void stableProfilesAreTheSameBytes();
    void stableNeedsAnIdentifier();
    void aGivenUuidGoesBeforeAStableOne();
    void eachFormOfAPropertyListHasTheSameSettings();
    void aPayloadHasStableUuids();
    void formsWithoutUuidsRefuseAnIdentity();
    void aPropertyListReplacesNothingByItself();
    void aManagedProfileIsReadByEveryVerb();
    void anInstalledManagedProfileIsTheSource();
};

void tst_PctForms::withoutOptionsAProfileIsAsEver()
{
    const ProfileRunner runner;
    const QStringList identity{text("--identifier"), text("a.b"), text("--uuid"),
                               text("11111111-2222-4333-8444-555555555555")};
    QCOMPARE(runner.makeProfile(true, identity).exitCode, 0);
    const QByteArray plain = TestFiles::read(runner.output());
    QCOMPARE(
        runner.makeProfile(true, identity + QStringList{text("--force"), text("--style"), text("payload")})
            .exitCode,
        0);
    static const QRegularExpression inner(text("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F-]{21}"));
    QCOMPARE(QString::fromUtf8(TestFiles::read(runner.output())).remove(inner),
             QString::fromUtf8(plain).remove(inner));
    const QJsonObject profile = runner.propertyList(runner.output());
    QCOMPARE(keysOf(profile),
             (QStringList{text("PayloadContent"), text("PayloadDescription"), text("PayloadDisplayName"),
                          text("PayloadIdentifier"), text("PayloadOrganization"), text("PayloadType"),
                          text("PayloadUUID"), text("PayloadVersion")}));
    QCOMPARE(keysOf(bareSettings(payloadOf(profile))), settingKeys());
    QCOMPARE(keysOf(payloadOf(profile)).size(), settingKeys().size() + 3);
}

void tst_PctForms::managedPreferencesForceTheSameSettings()
{
    const ProfileRunner runner;
    QCOMPARE(runner.makeProfile(true).exitCode, 0);
    const QJsonObject settings = bareSettings(payloadOf(runner.propertyList(runner.output())));
    const PctResult made = runner.makeProfile(true, {text("--style"), text("mcx"), text("--force")});
    QVERIFY2(made.exitCode == 0 && made.err.isEmpty(), made.err.constData());
    const QJsonObject profile = runner.propertyList(runner.output());
    QCOMPARE(payloadOf(profile).value(text("PayloadType")).toString(), managed);
    QCOMPARE(payloadOf(profile).value(text("PayloadVersion")).toInt(), 1);
    QCOMPARE(keysOf(payloadOf(profile)),
             (QStringList{text("PayloadContent"), text("PayloadIdentifier"), text("PayloadType"),
                          text("PayloadUUID"), text("PayloadVersion")}));
    QCOMPARE(forcedIn(profile), settings);
}

void tst_PctForms::whatIsSaidOfAProfileStandsInIt()
{
    const ProfileRunner runner;
    const PctResult made =
        runner.makeProfile(true, {text("--display-name"), text("Büro <1> & 2"), text("--organization"),
                                  text("Example"), text("--description"), text("For all"), text("--scope"),
                                  text("system"), text("--removal-disallowed"), text("--json")});
    QVERIFY2(made.exitCode == 0, made.err.constData());
    const QJsonObject profile = runner.propertyList(runner.output());
    QCOMPARE(profile.value(text("PayloadDisplayName")).toString(), text("Büro <1> & 2"));
    QCOMPARE(profile.value(text("PayloadOrganization")).toString(), text("Example"));
    QCOMPARE(profile.value(text("PayloadDescription")).toString(), text("For all"));
    QCOMPARE(profile.value(text("PayloadScope")).toString(), text("System"));
    QCOMPARE(profile.value(text("PayloadRemovalDisallowed")), QJsonValue(true));
    QCOMPARE(made.json().value(text("identity")).toObject().value(text("PayloadDisplayName")).toString(),
             text("Büro <1> & 2"));
    QCOMPARE(runner.makeProfile(true, {text("--scope"), text("user"), text("--force")}).exitCode, 0);
    QCOMPARE(runner.propertyList(runner.output()).value(text("PayloadScope")).toString(), text("User"));
}

void tst_PctForms::whatNoProfileCanHoldIsRefused()
{
    const ProfileRunner runner;
    const PctResult bell = runner.makeProfile(true, {text("--description"), text("a\x07")});
    QCOMPARE(bell.exitCode, 2);
    QVERIFY2(bell.err.contains("--description holds characters that no profile can hold"),
             bell.err.constData());
    QCOMPARE(runner.makeProfile(true, {text("--style"), text("MCX")}).exitCode, 2);
    QCOMPARE(runner.makeProfile(true, {text("--for"), text("other")}).exitCode, 2);
    QCOMPARE(runner.makeProfile(true, {text("--scope"), text("System")}).exitCode, 2);
    QVERIFY(!QFile::exists(runner.output()));
}

void tst_PctForms::stableUuidsAreThoseOfPython()
{
    const ProfileRunner runner;
    for (const auto &[style, type] : {std::pair(text("payload"), domain), std::pair(text("mcx"), managed)}) {
        const PctResult made =
            runner.makeProfile(true, identified + QStringList{text("--force"), text("--style"), style});
        QVERIFY2(made.exitCode == 0, made.err.constData());
        const QJsonObject profile = runner.propertyList(runner.output());
        const QString outer = text("uuid5(NAMESPACE_DNS, 'org.example.pelix')");
        QCOMPARE(profile.value(text("PayloadUUID")).toString(), uuid5(outer));
        QCOMPARE(payloadOf(profile).value(text("PayloadUUID")).toString(),
                 uuid5(text("uuid5(%1, '%2')").arg(outer, type)));
    }
}

void tst_PctForms::stableProfilesAreTheSameBytes()
{
    const ProfileRunner runner;
    QCOMPARE(runner.makeProfile(true, identified).exitCode, 0);
    const QByteArray first = TestFiles::read(runner.output());
    QCOMPARE(runner.makeProfile(true, identified + QStringList{text("--force")}).exitCode, 0);
    QCOMPARE(TestFiles::read(runner.output()), first);
    TestFiles::write(runner.file(text("deployed")), first);
    const QStringList again{text("--from"), runner.file(text("deployed")), text("--stable"), text("--force")};
    QCOMPARE(runner.makeProfile(true, again).exitCode, 0);
    QCOMPARE(TestFiles::read(runner.output()), first);
}

void tst_PctForms::stableNeedsAnIdentifier()
{
    const ProfileRunner runner;
    const PctResult bare = runner.makeProfile(true, {text("--stable")});
    QCOMPARE(bare.exitCode, 2);
    QVERIFY2(bare.err.contains("--stable needs an identifier"), bare.err.constData());
    TestFiles::write(runner.file(text("nameless")),
                     ProfileXml::profile(ProfileXml::payload({})).replace("host.example", ""));
    const PctResult from =
        runner.makeProfile(true, {text("--stable"), text("--from"), runner.file(text("nameless"))});
    QVERIFY2(from.isOneLineRefusal() && from.err.contains("--stable needs an identifier"),
             from.err.constData());
}

void tst_PctForms::aGivenUuidGoesBeforeAStableOne()
{
    const ProfileRunner runner;
    const QString given = text("11111111-2222-4333-8444-555555555555");
    QCOMPARE(runner.makeProfile(true, identified + QStringList{text("--uuid"), given}).exitCode, 0);
    const QJsonObject profile = runner.propertyList(runner.output());
    QCOMPARE(profile.value(text("PayloadUUID")).toString(), given);
    QCOMPARE(payloadOf(profile).value(text("PayloadUUID")).toString(),
             uuid5(text("uuid5(UUID('%1'), '%2')").arg(given, domain)));
}

void tst_PctForms::eachFormOfAPropertyListHasTheSameSettings()
{
    const ProfileRunner runner;
    QCOMPARE(runner.makeProfile(true).exitCode, 0);
    const QJsonObject settings = bareSettings(payloadOf(runner.propertyList(runner.output())));
    const auto made = [&](const char *form) {
        const PctResult result = runner.run({text("plist"), text("--product"), text("editor"), text("--form"),
                                             text(form), text("--output"), runner.file(text(form))});
        return result.exitCode == 0 && result.err.contains(domain.toUtf8()) == (form[0] != 'w')
                   ? TestFiles::read(runner.file(text(form)))
                   : result.err;
    };
    QVERIFY2(made("jamf").contains("<plist"), made("jamf").constData());
    QCOMPARE(runner.propertyList(runner.file(text("jamf"))), settings);
    const QByteArray pairs = made("intune");
    QVERIFY2(pairs.trimmed().startsWith("<key>") && !pairs.contains("<plist") && !pairs.contains("<?xml"),
             pairs.constData());
    QCOMPARE(readByPython(runner, "<plist version=\"1.0\"><dict>", pairs, "</dict></plist>"), settings);
    const QByteArray payload = made("workspace-one");
    QVERIFY2(payload.startsWith("<dict>") && payload.endsWith("</dict>\n"), payload.constData());
    const QJsonObject read = readByPython(runner, "<plist version=\"1.0\">", payload, "</plist>");
    QCOMPARE(bareSettings(read), settings);
    QCOMPARE(read.value(text("PayloadType")).toString(), domain);
    QCOMPARE(read.value(text("PayloadVersion")).toInt(), 1);
    QCOMPARE(read.value(text("PayloadEnabled")), QJsonValue(true));
    QCOMPARE(read.value(text("PayloadIdentifier")).toString(), text("com.pelix-software.Pelix.PDF.Editor"));
    QVERIFY(!read.value(text("PayloadUUID")).toString().isEmpty());
}

void tst_PctForms::aPayloadHasStableUuids()
{
    const ProfileRunner runner;
    const QString output = runner.file(text("payload"));
    const PctResult made =
        runner.run(QStringList{text("plist"), text("--product"), text("editor"), text("--form"),
                               text("workspace-one"), text("--output"), output} +
                   identified);
    QVERIFY2(made.exitCode == 0, made.err.constData());
    const QJsonObject payload =
        readByPython(runner, "<plist version=\"1.0\">", TestFiles::read(output), "</plist>");
    QCOMPARE(payload.value(text("PayloadUUID")).toString(),
             uuid5(text("uuid5(uuid5(NAMESPACE_DNS, 'org.example.pelix'), '%1')").arg(domain)));
}

void tst_PctForms::formsWithoutUuidsRefuseAnIdentity()
{
    const ProfileRunner runner;
    const PctResult result =
        runner.run(QStringList{text("plist"), text("--product"), text("editor"), text("--form"), text("jamf"),
                               text("--output"), runner.output()} +
                   identified);
    QCOMPARE(result.exitCode, 2);
    QVERIFY2(result.err.contains("only --form workspace-one has UUIDs"), result.err.constData());
    QVERIFY(!QFile::exists(runner.output()));
}

void tst_PctForms::aPropertyListReplacesNothingByItself()
{
    const ProfileRunner runner;
    TestFiles::write(runner.output(), "as it was");
    const QStringList line{text("plist"),  text("--product"), text("reader"),  text("--form"),
                           text("intune"), text("--output"),  runner.output(), text("--json")};
    const PctResult refused = runner.run(line);
    QCOMPARE(refused.exitCode, 1);
    QCOMPARE(refused.json().value(text("succeeded")), QJsonValue(false));
    QVERIFY2(refused.err.contains("exists already; use --force"), refused.err.constData());
    QCOMPARE(TestFiles::read(runner.output()), QByteArray("as it was"));
    const PctResult made = runner.run(line + QStringList{text("--force")});
    QCOMPARE(made.exitCode, 0);
    QCOMPARE(made.json().value(text("domain")).toString(),
             text("com.pelix-software.Pelix.PDF.Reader.settings"));
}

void tst_PctForms::aManagedProfileIsReadByEveryVerb()
{
    const ProfileRunner runner;
    const QString settings = runner.file(text("settings.json"));
    TestFiles::write(settings, R"({"product": "editor", "settings": {"strLoginDomainList": "a;b"}})");
    const QStringList from{text("--config"), settings};
    QCOMPARE(runner.makeProfile(true, from + identified).exitCode, 0);
    const QString plain = runner.file(text("plain"));
    QVERIFY(QFile::rename(runner.output(), plain));
    QCOMPARE(runner.makeProfile(true, from + identified + QStringList{text("--style"), text("mcx")}).exitCode,
             0);
    const PctResult shown = runner.run({text("show"), text("--json"), runner.output()});
    QCOMPARE(shown.json().value(text("settings")).toObject().value(text("strLoginDomainList")).toString(),
             text("a;b"));
    const PctResult same = runner.run({text("diff"), plain, runner.output()});
    QVERIFY2(same.exitCode == 0 && same.out.isEmpty(), same.out.constData());
    const QString mcx = runner.file(text("mcx"));
    QVERIFY(QFile::rename(runner.output(), mcx));
    const PctResult back = runner.makeProfile(true, {text("--from"), mcx, text("--stable")});
    QVERIFY2(back.exitCode == 0, back.err.constData());
    QCOMPARE(TestFiles::read(runner.output()), TestFiles::read(plain));
}

void tst_PctForms::anInstalledManagedProfileIsTheSource()
{
    const ProfileRunner runner;
    const QString settings = runner.file(text("settings.json"));
    TestFiles::write(settings, R"({"product": "editor", "settings": {"strLoginDomainList": "a;b"}})");
    QCOMPARE(runner
                 .makeProfile(true, identified +
                                        QStringList{text("--config"), settings, text("--style"), text("mcx")})
                 .exitCode,
             0);
    runner.install(runner.output());
    const PctResult made = runner.makeProfile(true, {text("--installed"), text("--force")});
    QVERIFY2(made.exitCode == 0 && made.err.isEmpty(), made.err.constData());
    const QJsonObject profile = runner.propertyList(runner.output());
    QCOMPARE(profile.value(text("PayloadIdentifier")).toString(), text("org.example.pelix"));
    QCOMPARE(preferenceOf(profile, text("LoginDomainList")).value(text("String")).toString(), text("a;b"));
}

QTEST_GUILESS_MAIN(tst_PctForms)
#include "tst_PctForms.moc"
