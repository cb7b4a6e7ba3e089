// SPDX-License-Identifier: Apache-2.0
#include "tests/hosttools/profiles/ProfilesRun.h"
#include "tests/hosttools/profiles/SigningTools.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QTest>

/// Which files can be installed as a profile, and which are refused.
class tst_ProfilesInstall : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_run.reset(new ProfilesRun); }

    void takesAnyIdentifier_data();
    void takesAnyIdentifier();
    void installsEveryForm_data();
    void installsEveryForm();
    void installsASignedProfile_data();
    void installsASignedProfile();
    void refusesASignedProfileThatWasChanged();
    void refusesWhatIsNoProfile_data();
    void refusesWhatIsNoProfile();
    void refusesHostileFiles_data();
    void refusesHostileFiles();

private:
    QScopedPointer<ProfilesRun> m_run;
};

namespace {

/// A binary list of a few bytes in which each array holds the next one twice: 2^40 texts when unfolded.
QByteArray binaryBomb()
{
    constexpr char objects = 40;
    QByteArray bytes("bplist00");
    QByteArray offsets;
    for (char i = 0; i < objects; ++i) {
        offsets.append(static_cast<char>(bytes.size()));
        bytes.append('\xA2').append(static_cast<char>(i + 1)).append(static_cast<char>(i + 1));
    }
    offsets.append(static_cast<char>(bytes.size()));
    bytes.append("\x51x");
    const auto number = [](int value) -> QByteArray {
        return QByteArray(7, '\0') + static_cast<char>(value);
    };
    return bytes + offsets + QByteArray(6, '\0') + "\x01\x01" + number(objects + 1) + number(0) +
           number(bytes.size());
}

} // namespace

void tst_ProfilesInstall::takesAnyIdentifier_data()
{
    QTest::addColumn<QByteArray>("identifier");
    QTest::newRow("path") << QByteArray("../../outside");
    QTest::newRow("dots") << QByteArray("..");
    QTest::newRow("white space") << QByteArray("a b");
    QTest::newRow("not English") << QByteArray("Büro.\xe6\x9c\xac");
    QTest::newRow("long") << QByteArray(5000, 'x');
}

void tst_ProfilesInstall::takesAnyIdentifier()
{
    QFETCH(QByteArray, identifier);
    QCOMPARE(m_run->install(ProfilesRun::profileText(identifier)).exitCode, 0);
    QCOMPARE(ToolRun::namesIn(m_run->folder()),
             QStringList({QStringLiteral("profile"), QStringLiteral("store")}));
    QCOMPARE(m_run
                 ->profiles(
                     {QStringLiteral("remove"), QStringLiteral("-identifier"), QString::fromUtf8(identifier)})
                 .exitCode,
             0);
}

void tst_ProfilesInstall::installsEveryForm_data()
{
    QTest::addColumn<QByteArray>("profile");
    const QByteArray text = ProfilesRun::profileText("form");
    QTest::newRow("binary") << ProfilesRun::converted(text, "FMT_BINARY");
    QTest::newRow("XML of another writer") << ProfilesRun::converted(text, "FMT_XML");
    QTest::newRow("carriage returns") << QByteArray(text).replace("\n", "\r\n");
    QTest::newRow("white space in front") << " \r\n\t" + text;
    QTest::newRow("no declaration") << text.mid(text.indexOf("<plist"));
}

void tst_ProfilesInstall::installsEveryForm()
{
    QFETCH(QByteArray, profile);
    const ToolRun::Result result = m_run->install(profile);
    QVERIFY2(result.exitCode == 0, result.errors.constData());
    const QJsonObject shown = m_run->shownProfiles().first().toObject();
    QCOMPARE(shown.value(QStringLiteral("ProfileDisplayName")).toString(), QStringLiteral("Pelix & Söhne"));
    QCOMPARE(ProfilesRun::converted(TestFiles::read(m_run->installedFile()), "FMT_XML"),
             ProfilesRun::converted(ProfilesRun::profileText("form"), "FMT_XML"));
}

void tst_ProfilesInstall::installsASignedProfile_data()
{
    QTest::addColumn<QString>("options");
    QTest::newRow("DER, SHA-256") << QString();
    QTest::newRow("BER, SHA-1") << QStringLiteral("-stream -md sha1");
}

void tst_ProfilesInstall::installsASignedProfile()
{
    QFETCH(QString, options);
    SigningTools::makeIdentity(QStringLiteral("Signer"), m_run->at("signer.pem"),
                               {QStringLiteral("--key"), QStringLiteral("ec")});
    TestFiles::write(m_run->at("plain"), ProfilesRun::profileText("signed"));
    SigningTools::signWithOpenSsl(m_run->at("plain"), m_run->at("signer.pem"), m_run->at("message"),
                                  options.split(QLatin1Char(' '), Qt::SkipEmptyParts));
    const ToolRun::Result result = m_run->install(TestFiles::read(m_run->at("message")));
    QVERIFY2(result.exitCode == 0, result.errors.constData());
    QCOMPARE(m_run->shownProfiles().first().toObject().value(QStringLiteral("ProfileIdentifier")).toString(),
             QStringLiteral("signed"));
}

void tst_ProfilesInstall::refusesASignedProfileThatWasChanged()
{
    SigningTools::makeIdentity(QStringLiteral("Signer"), m_run->at("signer.pem"),
                               {QStringLiteral("--key"), QStringLiteral("ec")});
    TestFiles::write(m_run->at("plain"), ProfilesRun::profileText("signed"));
    SigningTools::signWithOpenSsl(m_run->at("plain"), m_run->at("signer.pem"), m_run->at("message"));
    const ToolRun::Result result =
        m_run->install(TestFiles::read(m_run->at("message")).replace("StartPage", "StartPaqe"));
    QCOMPARE(result.exitCode, 1);
    QVERIFY(ToolRun::hasOneMessage(result, QStringLiteral("profiles")));
    QVERIFY(result.errors.contains("signature"));
    QVERIFY(!QFile::exists(m_run->at("store")));
}

void tst_ProfilesInstall::refusesWhatIsNoProfile_data()
{
    QTest::addColumn<QByteArray>("profile");
    QTest::addColumn<QByteArray>("complaint");
    const QByteArray good = ProfilesRun::profileText("good");
    const auto without = [&good](const char *key) { return QByteArray(good).replace(key, "Other"); };
    QTest::newRow("no type") << QByteArray(good).replace(
                                    "<key>PayloadType</key><string>Configuration</string>", "")
                             << QByteArray("PayloadType");
    QTest::newRow("another type") << without("Configuration") << QByteArray("PayloadType");
    QTest::newRow("no identifier") << without("PayloadIdentifier") << QByteArray("PayloadIdentifier");
    QTest::newRow("empty identifier") << ProfilesRun::profileText("") << QByteArray("PayloadIdentifier");
    QTest::newRow("no UUID") << without("PayloadUUID") << QByteArray("PayloadUUID");
    QTest::newRow("no content") << without("PayloadContent") << QByteArray("PayloadContent");
    QTest::newRow("a payload that is a text")
        << QByteArray(good).replace("<array><dict>\n<key>PayloadType",
                                    "<array><string>x</string><dict>\n<key>PayloadType")
        << QByteArray("payload");
    QTest::newRow("an array") << QByteArray("<plist version=\"1.0\"><array/></plist>")
                              << QByteArray("PayloadType");
    QTest::newRow("another document") << QByteArray("<html/>") << QByteArray("property list");
    QTest::newRow("a text") << QByteArray("just a text") << QByteArray("property list");
}

void tst_ProfilesInstall::refusesWhatIsNoProfile()
{
    QFETCH(QByteArray, profile);
    QFETCH(QByteArray, complaint);
    const ToolRun::Result result = m_run->install(profile);
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(ToolRun::hasOneMessage(result, QStringLiteral("profiles")), result.errors.constData());
    QVERIFY2(result.errors.contains(complaint), result.errors.constData());
    QVERIFY(!QFile::exists(m_run->at("store")));
}

void tst_ProfilesInstall::refusesHostileFiles_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray good = ProfilesRun::profileText("good");
    const QByteArray binary = ProfilesRun::converted(good, "FMT_BINARY");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("cut") << good.left(good.size() / 2);
    QTest::newRow("cut binary") << binary.left(binary.size() - 20);
    QTest::newRow("binary with wild offsets") << binary.left(binary.size() - 32) + QByteArray(32, '\xff');
    QTest::newRow("binary of nothing but its mark") << QByteArray("bplist00");
    QTest::newRow("binary bomb") << binaryBomb();
    QTest::newRow("binary that holds itself") << QByteArray(
        "bplist00\xa1\x00\x08\0\0\0\0\0\0\x01\x01\0\0\0\0\0\0\0\x01\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\x0a", 43);
    QTest::newRow("nested 100,000 deep") << "<plist version=\"1.0\">" +
                                                QByteArray("<array>").repeated(100000) +
                                                QByteArray("</array>").repeated(100000) + "</plist>";
    QTest::newRow("entities") << QByteArray(good)
                                     .replace("dtd\">", "dtd\" [<!ENTITY a \"aaaa\"><!ENTITY b \"&a;&a;\">]>")
                                     .replace("S\xc3\xb6hne", "&b;");
    QTest::newRow("NUL") << QByteArray(good).replace("Settings", QByteArray("Set\0tings", 9));
    QTest::newRow("control character") << QByteArray(good).replace("Settings", "Set\x01tings");
    QTest::newRow("broken UTF-8") << QByteArray(good).replace("Settings", "Set\xff\xfetings");
    QTest::newRow("looks signed") << QByteArray("\x30\x82\x01\x00", 4) + good;
    QTest::newRow("40 MB") << good + QByteArray(40 << 20, ' ');
}

void tst_ProfilesInstall::refusesHostileFiles()
{
    QFETCH(QByteArray, bytes);
    QCOMPARE(m_run->install(ProfilesRun::profileText("kept")).exitCode, 0);
    const QByteArray before = ToolRun::contentsOf(m_run->at("store"));
    const ToolRun::Result result = m_run->install(bytes);
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(ToolRun::hasOneMessage(result, QStringLiteral("profiles")), result.errors.constData());
    QVERIFY(result.errors.contains("/profile: "));
    QCOMPARE(ToolRun::contentsOf(m_run->at("store")), before);
}

QTEST_GUILESS_MAIN(tst_ProfilesInstall)
#include "tst_ProfilesInstall.moc"
