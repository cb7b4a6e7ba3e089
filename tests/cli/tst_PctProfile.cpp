// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/ProfileRunner.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

#include <QJsonArray>

namespace {

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

QString stringIn(const QJsonObject &object, const char *key)
{
    return object.value(text(key)).toString();
}

const QString aUuid = QStringLiteral("0A1B2C3D-4E5F-4678-9ABC-DEF012345678");
const QString otherUuid = QStringLiteral("FFFFFFFF-4E5F-4678-9ABC-DEF012345678");

bool isFreshUuid(const QString &uuid)
{
    static const QRegularExpression form(
        QStringLiteral("\\A[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}\\z"));
    return form.match(uuid).hasMatch();
}

QByteArray someSettings()
{
    return "<Profstore><Preferences>"
           "<Preference Text='StartPage' Mode='0'/>"
           "<Preference Text='Advertise' Disable='1'/>"
           "<Preference Text='bMIPCheckPolicyOnDocSave' Mode='1'/>"
           "<Preference Text='DefaultLaunchAttachmentPerms' Mode='1' BuiltInPermList='version:1|.exe:3'"
           " DisableOpenSaveFileAttach='1'/>"
           "<Preference Text='LoginDomain' String='2'/>"
           "<Preference Text='LoginDomainList' String='a.example;&lt;ä&amp;b&gt;.example'/></Preferences>"
           "<RibbonSetRibbonCategory><RibbonUI name='r'><Category id='1'/><Category id='2'/></RibbonUI>"
           "</RibbonSetRibbonCategory></Profstore>";
}

/// A profile of the given identity, made by `pct` itself.
QString knownProfile(const ProfileRunner &runner, bool editor)
{
    const QString path = runner.file(text("known.mobileconfig"));
    const PctResult made =
        runner.makeProfile(editor, {text("--identifier"), text("known.example"), text("--uuid"), aUuid});
    if (made.exitCode != 0 || !QFile::rename(runner.output(), path))
        qFatal("no known profile: %s", made.err.constData());
    return path;
}

} // namespace

class tst_PctProfile : public QObject
{
    Q_OBJECT

private slots:
    void aProfileWithoutASourceHasTheDefaultsAndAFreshIdentity();
    void aDocumentsSettingsAreInTheProfile();
    void aDocumentOfTheOtherProductIsTakenWithAWarning();
    void theIdentityFollowsTheRules_data();
    void theIdentityFollowsTheRules();
    void aUuidAloneEndsTheIdentifierToo();
    void settingsOfASourceProfileAreKept();
    void theInstalledProfileIsTheSource();
    void theInstalledProfileIsFoundBehindMebibytesOfOthers();
    void twoRunsDifferInTheInnerUuidOnly();
    void aProfileOfTheOtherProductIsRefused();
    void aProfileOfAnotherApplicationIsRefused();
    void theResultIsReportedAsJson();
    void aFailureIsReportedAsJson();
    void quietMeansNoConfirmationAndNoWarning();
    void controlCharactersOfASourceStayOut();
};

void tst_PctProfile::aProfileWithoutASourceHasTheDefaultsAndAFreshIdentity()
{
    const ProfileRunner runner;
    const PctResult made = runner.makeProfile(true);
    QVERIFY2(made.exitCode == 0 && made.err.isEmpty(), made.err.constData());
    QCOMPARE(QString::fromUtf8(made.out), runner.output() + QLatin1Char('\n'));
    const QJsonObject profile = runner.propertyList(runner.output());
    QCOMPARE(stringIn(profile, "PayloadType"), text("Configuration"));
    QCOMPARE(stringIn(profile, "PayloadDisplayName"), text("Pelix PDF Editor"));
    QVERIFY2(isFreshUuid(stringIn(profile, "PayloadUUID")), qPrintable(stringIn(profile, "PayloadUUID")));
    QVERIFY(
        stringIn(profile, "PayloadIdentifier").endsWith(QLatin1Char('.') + stringIn(profile, "PayloadUUID")));
    QCOMPARE(stringIn(payloadOf(profile), "PayloadIdentifier"), text("com.pelix-software.Pelix.PDF.Editor"));
    QCOMPARE(stringIn(preferenceOf(profile, text("StartPage")), "Mode"), text("1"));
    QCOMPARE(runner.files(), QStringList{text("out.mobileconfig")});
    QCOMPARE(runner.temporaryLeftovers(), QStringList());
}

void tst_PctProfile::aDocumentsSettingsAreInTheProfile()
{
    const ProfileRunner runner;
    const PctResult made =
        runner.makeProfile(true, {text("--config"), runner.document("PelixPDFEditor", someSettings())});
    QVERIFY2(made.exitCode == 0 && made.err.isEmpty(), made.err.constData());
    const QJsonObject profile = runner.propertyList(runner.output());
    QCOMPARE(stringIn(preferenceOf(profile, text("StartPage")), "Mode"), text("0"));
    QCOMPARE(stringIn(preferenceOf(profile, text("Advertise")), "Disable"), text("1"));
    QCOMPARE(preferenceOf(profile, text("bMIPCheckPolicyOnDocSave")).value(text("Mode")), QJsonValue(1));
    const QJsonObject attachments = preferenceOf(profile, text("DefaultLaunchAttachmentPerms"));
    QCOMPARE(stringIn(attachments, "DisableOpenSaveFileAttach"), text("2"));
    QCOMPARE(stringIn(attachments, "BuiltInPermList"), text("version:1|.exe:3"));
    QCOMPARE(stringIn(preferenceOf(profile, text("LoginDomainList")), "String"),
             text("a.example;<ä&b>.example"));
    const QJsonObject ribbon = payloadOf(profile)
                                   .value(text("RibbonSetRibbonCategory"))
                                   .toObject()
                                   .value(text("RibbonUI"))
                                   .toObject();
    QCOMPARE(ribbon.value(text("Category")).toArray().size(), 2);
}

void tst_PctProfile::aDocumentOfTheOtherProductIsTakenWithAWarning()
{
    const ProfileRunner runner;
    const QString document = runner.document("PelixPDFEditor", someSettings());
    const PctResult made = runner.makeProfile(false, {text("--config"), document});
    QCOMPARE(made.exitCode, 0);
    QCOMPARE(made.messages(), QStringList{text("pct: %1: warning: is a document of the Pelix PDF Editor; "
                                               "settings that the Pelix PDF Reader lacks are left out")
                                              .arg(document)});
    const QJsonObject profile = runner.propertyList(runner.output());
    QCOMPARE(stringIn(preferenceOf(profile, text("Advertise")), "Disable"), text("0"));
    QCOMPARE(stringIn(preferenceOf(profile, text("LoginDomainList")), "String"), QString());
}

void tst_PctProfile::theIdentityFollowsTheRules_data()
{
    QTest::addColumn<QStringList>("more");
    QTest::addColumn<QString>("identifier");
    QTest::addColumn<QString>("uuid");
    const QStringList from{text("--from"), text("known.mobileconfig")};
    const QStringList givenIdentifier{text("--identifier"), text("given.example")};
    const QStringList givenUuid{text("--uuid"), otherUuid};
    QTest::newRow("both given") << givenIdentifier + givenUuid << text("given.example") << otherUuid;
    QTest::newRow("source") << from << text("known.example") << aUuid;
    QTest::newRow("identifier before source") << from + givenIdentifier << text("given.example") << aUuid;
    QTest::newRow("UUID before source") << from + givenUuid << text("known.example") << otherUuid;
    QTest::newRow("both before source")
        << from + givenIdentifier + givenUuid << text("given.example") << otherUuid;
    QTest::newRow("installed") << QStringList{text("--installed")} << text("known.example") << aUuid;
    QTest::newRow("identifier before installed")
        << QStringList{text("--installed")} + givenIdentifier << text("given.example") << aUuid;
}

void tst_PctProfile::theIdentityFollowsTheRules()
{
    QFETCH(QStringList, more);
    QFETCH(QString, identifier);
    QFETCH(QString, uuid);
    const ProfileRunner runner;
    runner.install(knownProfile(runner, true));
    const PctResult made = runner.makeProfile(true, more);
    QVERIFY2(made.exitCode == 0, made.err.constData());
    const QJsonObject profile = runner.propertyList(runner.output());
    QCOMPARE(stringIn(profile, "PayloadIdentifier"), identifier);
    QCOMPARE(stringIn(profile, "PayloadUUID"), uuid);
}

void tst_PctProfile::aUuidAloneEndsTheIdentifierToo()
{
    const ProfileRunner runner;
    QCOMPARE(runner.makeProfile(true, {text("--uuid"), aUuid}).exitCode, 0);
    const QJsonObject profile = runner.propertyList(runner.output());
    QCOMPARE(stringIn(profile, "PayloadUUID"), aUuid);
    QVERIFY(stringIn(profile, "PayloadIdentifier").endsWith(QLatin1Char('.') + aUuid));
}

void tst_PctProfile::settingsOfASourceProfileAreKept()
{
    const ProfileRunner runner;
    const QString document = runner.document("PelixPDFEditor", someSettings());
    QCOMPARE(runner.makeProfile(true, {text("--config"), document}).exitCode, 0);
    QVERIFY(QFile::rename(runner.output(), runner.file(text("first"))));
    QCOMPARE(runner.makeProfile(true, {text("--from"), text("first")}).exitCode, 0);
    const PctResult compared = runner.run({text("diff"), text("first"), text("out.mobileconfig")});
    QVERIFY2(compared.exitCode == 0, QByteArray(compared.out + compared.err).constData());
    const QJsonObject again = runner.propertyList(runner.output());
    QCOMPARE(stringIn(preferenceOf(again, text("DefaultLaunchAttachmentPerms")), "DisableOpenSaveFileAttach"),
             text("2"));
}

void tst_PctProfile::theInstalledProfileIsTheSource()
{
    const ProfileRunner runner;
    const QString document = runner.document("PelixPDFReader", someSettings());
    QCOMPARE(runner.makeProfile(false, {text("--config"), document}).exitCode, 0);
    QVERIFY(QFile::rename(runner.output(), runner.file(text("first"))));
    runner.install(runner.file(text("first")));
    const PctResult made = runner.makeProfile(false, {text("--installed")});
    QVERIFY2(made.exitCode == 0, made.err.constData());
    const PctResult compared = runner.run({text("diff"), text("first"), text("out.mobileconfig")});
    QVERIFY2(compared.exitCode == 0, QByteArray(compared.out + compared.err).constData());
    const QJsonObject profile = runner.propertyList(runner.output());
    QCOMPARE(stringIn(preferenceOf(profile, text("StartPage")), "Mode"), text("0"));
}

void tst_PctProfile::theInstalledProfileIsFoundBehindMebibytesOfOthers()
{
    const ProfileRunner runner;
    const QString other = runner.file(text("other"));
    const QByteArray filling = ProfileXml::key("A", ProfileXml::string(QByteArray(1024 * 1024, 'x')));
    for (const char *identifier : {"a.example", "b.example", "c.example", "z.example"}) {
        TestFiles::write(other, ProfileXml::profile(ProfileXml::payload("", "org.example.viewer") + filling)
                                    .replace("host.example", identifier));
        runner.install(other);
    }
    runner.install(knownProfile(runner, true));
    const PctResult made = runner.makeProfile(true, {text("--installed")});
    QVERIFY2(made.exitCode == 0 && made.err.isEmpty(), made.err.constData());
    QCOMPARE(stringIn(runner.propertyList(runner.output()), "PayloadUUID"), aUuid);
}

void tst_PctProfile::twoRunsDifferInTheInnerUuidOnly()
{
    const ProfileRunner runner;
    const QStringList more{text("--config"),     runner.document("PelixPDFEditor", someSettings()),
                           text("--identifier"), text("known.example"),
                           text("--uuid"),       aUuid,
                           text("--force")};
    QList<QByteArray> profiles;
    QSet<QString> inner;
    for (int run = 0; run < 2; ++run) {
        QCOMPARE(runner.makeProfile(true, more).exitCode, 0);
        const QString uuid = stringIn(payloadOf(runner.propertyList(runner.output())), "PayloadUUID");
        QVERIFY(isFreshUuid(uuid));
        inner.insert(uuid);
        QByteArray profile = TestFiles::read(runner.output());
        QCOMPARE(profile.count(uuid.toUtf8()), 1);
        profiles.append(profile.replace(uuid.toUtf8(), "INNER"));
    }
    QCOMPARE(inner.size(), 2);
    QVERIFY(profiles.at(0).contains("&lt;\xc3\xa4&amp;b"));
    QCOMPARE(profiles.at(1), profiles.at(0));
}

void tst_PctProfile::aProfileOfTheOtherProductIsRefused()
{
    const ProfileRunner runner;
    const QString reader = knownProfile(runner, false);
    const PctResult result = runner.makeProfile(true, {text("--from"), reader});
    QVERIFY2(result.isOneLineRefusal(), result.err.constData());
    QVERIFY2(result.err.contains("com.pelix-software.Pelix.PDF.Reader") &&
                 result.err.contains("use --product reader"),
             result.err.constData());
    QCOMPARE(runner.files(), QStringList{text("known.mobileconfig")});
}

void tst_PctProfile::aProfileOfAnotherApplicationIsRefused()
{
    const ProfileRunner runner;
    const QString other = runner.file(text("other.mobileconfig"));
    TestFiles::write(other, ProfileXml::profile(ProfileXml::payload("", "org.example.viewer")));
    const PctResult result = runner.makeProfile(true, {text("--from"), other});
    QVERIFY2(result.isOneLineRefusal() && result.err.contains("org.example.viewer"), result.err.constData());
    const PctResult shown = runner.run({text("show"), other});
    QVERIFY2(shown.isOneLineRefusal() && shown.err.contains("org.example.viewer"), shown.err.constData());
}

void tst_PctProfile::theResultIsReportedAsJson()
{
    const ProfileRunner runner;
    const QString source = knownProfile(runner, true);
    const QJsonObject report = runner.makeProfile(true, {text("--from"), source, text("--json")}).json();
    const QStringList keys{text("config"),    text("for"),    text("from"),      text("identity"),
                           text("installed"), text("output"), text("problem"),   text("product"),
                           text("signer"),    text("style"),  text("succeeded"), text("warnings")};
    QCOMPARE(report.keys(), keys);
    QCOMPARE(report.value(text("succeeded")), QJsonValue(true));
    QCOMPARE(report.value(text("problem")), QJsonValue());
    QCOMPARE(stringIn(report, "from"), source);
    QCOMPARE(stringIn(report, "output"), runner.output());
    const QJsonObject identity = report.value(text("identity")).toObject();
    QCOMPARE(stringIn(identity, "PayloadIdentifier"), text("known.example"));
    QCOMPARE(stringIn(identity, "PayloadUUID"), aUuid);
    QCOMPARE(stringIn(identity, "PayloadOrganization"), text("Pelix Software Inc."));
}

void tst_PctProfile::aFailureIsReportedAsJson()
{
    const ProfileRunner runner;
    const PctResult result = runner.makeProfile(true, {text("--from"), text("missing"), text("--json")});
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(result.messages().size(), 1);
    const QJsonObject report = result.json();
    QCOMPARE(report.value(text("succeeded")), QJsonValue(false));
    QCOMPARE(stringIn(report.value(text("problem")).toObject(), "file"), runner.file(text("missing")));
    QCOMPARE(report.value(text("identity")), QJsonValue());
}

void tst_PctProfile::quietMeansNoConfirmationAndNoWarning()
{
    const ProfileRunner runner;
    const QString document = runner.document("PelixPDFReader", "");
    const PctResult result = runner.makeProfile(true, {text("-q"), text("--config"), document});
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.out + result.err, QByteArray());
}

void tst_PctProfile::controlCharactersOfASourceStayOut()
{
    const ProfileRunner runner;
    const QString source = knownProfile(runner, true);
    // A binary property list can hold control characters, XML cannot.
    const QString script = text("import plistlib, sys\n"
                                "profile = plistlib.load(open(sys.argv[1], 'rb'))\n"
                                "for item in profile['PayloadContent'][0]['Preferences']:\n"
                                "    if item['Preference']['Text'] == 'LoginDomainList':\n"
                                "        item['Preference']['String'] = 'a\\x01b'\n"
                                "plistlib.dump(profile, open(sys.argv[1], 'wb'), fmt=plistlib.FMT_BINARY)");
    TestFiles::outputOf(text("/usr/bin/python3"), {text("-c"), script, source});
    QVERIFY(TestFiles::read(source).contains("a\x01"
                                             "b"));
    const PctResult result = runner.makeProfile(true, {text("--from"), source});
    QVERIFY2(result.isOneLineRefusal() &&
                 result.err.contains("its strLoginDomainList holds control characters"),
             result.err.constData());
    QVERIFY(!QFile::exists(runner.output()));
    const PctResult shown = runner.run({text("show"), source});
    QVERIFY2(shown.out.contains("\"a\\x01b\""), shown.out.constData());
}

QTEST_GUILESS_MAIN(tst_PctProfile)
#include "tst_PctProfile.moc"
