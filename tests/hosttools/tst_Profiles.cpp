// SPDX-License-Identifier: Apache-2.0
#include "tests/hosttools/profiles/ProfilesRun.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QTest>

/// The store of profiles: what is shown, listed, replaced and removed.
class tst_Profiles : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_run.reset(new ProfilesRun); }

    void saysThatNothingIsInstalled();
    void showsAProfileInTheSystemsTerms();
    void showsWhatOtherProgramsCanRead();
    void groupsProfilesByLevel();
    void showsProfilesInTheOrderOfTheirInstallation();
    void replacesTheProfileOfTheSameIdentifier();
    void removesAProfile();
    void refusesToRemoveWhatIsNotInstalled();
    void refusesLinksInItsFolder();
    void namesADamagedProfileInItsFolder();
    void makesItsFolderInTheUsersDataFolder();
    void refusesWrongUsage_data();
    void refusesWrongUsage();

private:
    QScopedPointer<ProfilesRun> m_run;
};

namespace {

const QByteArray nothingInstalled = "There are no configuration profiles installed for user '";

} // namespace

void tst_Profiles::saysThatNothingIsInstalled()
{
    const ToolRun::Result result = m_run->show();
    QCOMPARE(result.exitCode, 0);
    QVERIFY(result.output.startsWith(nothingInstalled));
    QCOMPARE(result.output.count('\n'), 1);
    QVERIFY(!result.output.contains('<'));
    QCOMPARE(result.errors, QByteArray());
}

void tst_Profiles::showsAProfileInTheSystemsTerms()
{
    const ToolRun::Result installed = m_run->install(ProfilesRun::profileText("host.A1B2"));
    QVERIFY2(installed.exitCode == 0, installed.errors.constData());
    QCOMPARE(installed.output, QByteArray());
    QCOMPARE(m_run->shownProfiles().size(), 1);
    QJsonObject profile = m_run->shownProfiles().first().toObject();
    QVERIFY(profile.take(QStringLiteral("ProfileInstallDate")).toString().endsWith(QStringLiteral(" +0000")));
    const QByteArray expected = R"({
        "ProfileDisplayName": "Pelix & Söhne", "ProfileIdentifier": "host.A1B2", "ProfileUUID": "A1B2",
        "ProfileOrganization": "Pelix Software Inc.", "ProfileDescription": "Settings",
        "ProfileType": "Configuration", "ProfileVersion": 1,
        "ProfileItems": [{
            "PayloadType": "com.example.settings", "PayloadIdentifier": "com.example.App",
            "PayloadUUID": "C3D4",
            "PayloadContent": {"Mode": -1, "Empty": "", "Preferences": [{"Text": "StartPage"}]}}]})";
    QCOMPARE(profile, QJsonDocument::fromJson(expected).object());
}

void tst_Profiles::showsWhatOtherProgramsCanRead()
{
    QCOMPARE(m_run->install(ProfilesRun::profileText("host.A1B2")).exitCode, 0);
    const QByteArray shown = m_run->show().output;
    QVERIFY(shown.startsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>"));
    ToolRun::filtered(shown, QStringLiteral("xmllint"),
                      {QStringLiteral("--noout"), QStringLiteral("--nonet"), QStringLiteral("-")});
    TestFiles::write(m_run->at("shown"), shown);
    TestFiles::outputOf(QStringLiteral("plistutil"),
                        {QStringLiteral("-i"), m_run->at("shown"), QStringLiteral("-f"),
                         QStringLiteral("bin"), QStringLiteral("-o"), m_run->at("binary")});
    QCOMPARE(ProfilesRun::converted(TestFiles::read(m_run->at("binary")), "FMT_XML"),
             ProfilesRun::converted(shown, "FMT_XML"));
}

void tst_Profiles::groupsProfilesByLevel()
{
    QCOMPARE(m_run->install(ProfilesRun::profileText("of.the.user")).exitCode, 0);
    const QByteArray system = "<key>PayloadScope</key><string>System</string>";
    QCOMPARE(m_run->install(ProfilesRun::profileText("of.the.machine", system)).exitCode, 0);
    const QJsonObject levels = m_run->shownLevels();
    const QString user =
        QString::fromUtf8(TestFiles::outputOf(QStringLiteral("id"), {QStringLiteral("-un")})).trimmed();
    QCOMPARE(levels.keys(), QStringList({QStringLiteral("_computerlevel"), user}));
    QCOMPARE(levels.value(user).toArray().size(), 1);
    const QByteArray listed = m_run->profiles({QStringLiteral("list")}).output;
    QCOMPARE(listed, user.toUtf8() + "[1] attribute: profileIdentifier: of.the.user\n"
                                     "_computerlevel[2] attribute: profileIdentifier: of.the.machine\n");
}

void tst_Profiles::showsProfilesInTheOrderOfTheirInstallation()
{
    QStringList identifiers;
    for (const auto *identifier : {"c", "a", "d", "b"}) {
        QCOMPARE(m_run->install(ProfilesRun::profileText(identifier)).exitCode, 0);
        QTest::qWait(20); // longer than the clock of a file system ticks
    }
    for (const QJsonValue profile : m_run->shownProfiles())
        identifiers.append(profile.toObject().value(QStringLiteral("ProfileIdentifier")).toString());
    QCOMPARE(identifiers.join(QLatin1Char(' ')), QStringLiteral("c a d b"));
}

void tst_Profiles::replacesTheProfileOfTheSameIdentifier()
{
    QCOMPARE(m_run->install(ProfilesRun::profileText("same")).exitCode, 0);
    QCOMPARE(m_run->install(ProfilesRun::profileText("same").replace("A1B2", "NEW")).exitCode, 0);
    QCOMPARE(ToolRun::namesIn(m_run->at("store")).size(), 1);
    QCOMPARE(m_run->shownProfiles().size(), 1);
    QCOMPARE(m_run->shownProfiles().first().toObject().value(QStringLiteral("ProfileUUID")).toString(),
             QStringLiteral("NEW"));
}

void tst_Profiles::removesAProfile()
{
    QCOMPARE(m_run->install(ProfilesRun::profileText("kept")).exitCode, 0);
    QCOMPARE(m_run->install(ProfilesRun::profileText("dropped")).exitCode, 0);
    const QStringList remove = {QStringLiteral("remove"), QStringLiteral("-identifier")};
    QCOMPARE(m_run->profiles(remove + QStringList(QStringLiteral("dropped"))).exitCode, 0);
    QCOMPARE(m_run->shownProfiles().size(), 1);
    QCOMPARE(m_run->profiles(remove + QStringList(QStringLiteral("kept"))).exitCode, 0);
    QVERIFY(m_run->show().output.startsWith(nothingInstalled));
    QCOMPARE(ToolRun::namesIn(m_run->at("store")), QStringList());
}

void tst_Profiles::refusesToRemoveWhatIsNotInstalled()
{
    QCOMPARE(m_run->install(ProfilesRun::profileText("kept")).exitCode, 0);
    for (const auto *identifier : {"other", "", "../store", "/etc/passwd"}) {
        const ToolRun::Result result = m_run->profiles(
            {QStringLiteral("remove"), QStringLiteral("-identifier"), QLatin1String(identifier)});
        QCOMPARE(result.exitCode, 1);
        QVERIFY(ToolRun::hasOneMessage(result, QStringLiteral("profiles")));
    }
    QCOMPARE(m_run->shownProfiles().size(), 1);
}

void tst_Profiles::refusesLinksInItsFolder()
{
    QCOMPARE(m_run->install(ProfilesRun::profileText("good")).exitCode, 0);
    const QString installed = m_run->installedFile();
    TestFiles::write(m_run->at("elsewhere"), ProfilesRun::profileText("good"));
    QVERIFY(QFile::remove(installed) && QFile::link(m_run->at("elsewhere"), installed));
    const ToolRun::Result replaced = m_run->install(ProfilesRun::profileText("good").replace("A1B2", "NEW"));
    QCOMPARE(replaced.exitCode, 1);
    QVERIFY(ToolRun::hasOneMessage(replaced, QStringLiteral("profiles")));
    QCOMPARE(TestFiles::read(m_run->at("elsewhere")), ProfilesRun::profileText("good"));
    const ToolRun::Result shown = m_run->show();
    QCOMPARE(shown.exitCode, 1);
    QCOMPARE(shown.output, QByteArray());
    QVERIFY(ToolRun::hasOneMessage(shown, QStringLiteral("profiles")));
}

void tst_Profiles::namesADamagedProfileInItsFolder()
{
    QCOMPARE(m_run->install(ProfilesRun::profileText("good")).exitCode, 0);
    TestFiles::write(m_run->at("store/notes.txt"), "no profile, and none of ours");
    QCOMPARE(m_run->show().exitCode, 0);
    TestFiles::write(m_run->at("store/damaged.plist"), "<plist");
    const ToolRun::Result result = m_run->show();
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(result.output, QByteArray());
    QVERIFY(ToolRun::hasOneMessage(result, QStringLiteral("profiles")));
    QVERIFY(result.errors.contains("damaged.plist"));
}

void tst_Profiles::makesItsFolderInTheUsersDataFolder()
{
    TestFiles::write(m_run->at("profile"), ProfilesRun::profileText("home"));
    const ToolRun::Result result = ToolRun::run(
        QStringLiteral("profiles"),
        {QStringLiteral("install"), QStringLiteral("-path"), m_run->at("profile")}, m_run->folder(),
        {QStringLiteral("PCT_PROFILES_DIR="), QStringLiteral("XDG_DATA_HOME=") + m_run->at("data")});
    QVERIFY2(result.exitCode == 0, result.errors.constData());
    QCOMPARE(ToolRun::namesIn(m_run->at("data/pct/profiles")).size(), 1);
    const QFile::Permissions others = QFile::ReadGroup | QFile::ReadOther | QFile::ExeGroup | QFile::ExeOther;
    QVERIFY(!(QFile::permissions(m_run->at("data/pct/profiles")) & others));
}

void tst_Profiles::refusesWrongUsage_data()
{
    QTest::addColumn<QString>("arguments");
    for (const auto *arguments :
         {"", "show", "show -output stdout", "show -output stdout-xml -type provisioning", "install",
          "install -path", "install -path a -path b", "remove", "renew", "list -output stdout-xml"})
        QTest::newRow(arguments) << QString::fromLatin1(arguments);
}

void tst_Profiles::refusesWrongUsage()
{
    QFETCH(QString, arguments);
    const ToolRun::Result result = m_run->profiles(arguments.split(QLatin1Char(' '), Qt::SkipEmptyParts));
    QCOMPARE(result.exitCode, 2);
    QVERIFY(result.errors.startsWith("usage: profiles "));
    QCOMPARE(result.output, QByteArray());
}

QTEST_GUILESS_MAIN(tst_Profiles)
#include "tst_Profiles.moc"
