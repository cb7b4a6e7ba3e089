// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/ManagedMac.h"
#include "tests/support/TestFiles.h"

#include <QJsonArray>
#include <QtTest>

using namespace ManagedReport;
using namespace ProfileXml;

namespace {

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

/// The settings of managedSettings() as JSON for `pct`, with other login domains.
QByteArray wantedJson(const QByteArray &domains = "a.example;b.example")
{
    return "{\"product\": \"editor\", \"settings\": {\"bShowStartPage\": false, \"bHideMyApps\": true, "
           "\"bMIPCheckPolicySet\": true, \"nMIPCheckPolicyOnDocSave\": 1, \"strUnloadPluginArray\": "
           "\"one;two\", \"strLoginDomainList\": \"" +
           domains + "\"}}";
}

QString user()
{
    return QString::fromUtf8(TestFiles::outputOf(text("id"), {text("-un")})).trimmed();
}

/// A Mac with files to compare with: "wanted" has what its managed preferences say, "other" does not.
class DriftingMac : public ManagedMac
{
public:
    DriftingMac()
    {
        TestFiles::write(file(text("wanted")), wantedJson());
        TestFiles::write(file(text("other")), wantedJson("c.example"));
    }

    PctResult drift(const char *name, const QStringList &more = {}) const
    {
        return run(QStringList{text("drift"), text("--product"), text("editor"), file(text(name))} + more);
    }

    /// A profile of a file's settings that a management would install for the device.
    QString profileOf(const char *name, const QStringList &more = {}) const
    {
        const PctResult made = makeProfile(
            true, QStringList{text("--config"), file(text(name)), text("--identifier"),
                              text("office.example"), text("--scope"), text("system"), text("--force")} +
                      more);
        return made.exitCode == 0 ? output() : QString();
    }
};

QByteArray said(const PctResult &result)
{
    return result.out + result.err;
}

bool cannotTell(const PctResult &result, const QByteArray &reason)
{
    return result.exitCode == 2 && result.out.isEmpty() && result.messages().size() == 1 &&
           result.err.contains(reason) && result.err.contains("run this as root");
}

} // namespace

/// `pct drift`: what is installed against a file.
class tst_PctDrift : public QObject
{
    Q_OBJECT

private slots:
    void managedPreferencesAreCompared();
    void whatDiffersIsSaidWithBothValues();
    void theResultIsThereAsJson();
    void anyFileWithSettingsCanBeCompared();
    void listedProfilesAreCompared_data();
    void listedProfilesAreCompared();
    void everyCopyCounts();
    void anUnreadPlaceIsNeverTheSame_data();
    void anUnreadPlaceIsNeverTheSame();
    void aDifferenceIsDriftWhateverElseIsUnread();
    void filesOutOfReachCannotBeTold();
    void nothingInstalledCannotBeTold();
    void aFileThatCannotBeReadIsTrouble();
    void whatNoProfileCarriesIsNoDrift();
    void theFlowOfAManagementIsSeen();
};

void tst_PctDrift::managedPreferencesAreCompared()
{
    const DriftingMac mac;
    TestFiles::write(mac.preferences(), managedSettings());
    const PctResult same = mac.drift("wanted");
    QVERIFY2(same.exitCode == 0 && same.out.isEmpty() && same.err.isEmpty(), said(same).constData());
    QCOMPARE(mac.drift("other").exitCode, 1);
}

void tst_PctDrift::whatDiffersIsSaidWithBothValues()
{
    const DriftingMac mac;
    TestFiles::write(mac.preferences(), managedSettings());
    const PctResult drift = mac.drift("other");
    QCOMPARE(drift.exitCode, 1);
    QCOMPARE(QString::fromUtf8(drift.out),
             mac.preferences() + text(": strLoginDomainList: \"a.example;b.example\" -> \"c.example\"\n"));
    QCOMPARE(drift.err, QByteArray());
}

void tst_PctDrift::theResultIsThereAsJson()
{
    const DriftingMac mac;
    TestFiles::write(mac.preferences(), managedSettings());
    const PctResult drift = mac.drift("other", {text("--json")});
    QCOMPARE(drift.exitCode, 1);
    QCOMPARE(drift.json().value(text("result")).toString(), text("drift"));
    const QJsonObject copy = drift.json().value(text("installed")).toArray().at(0).toObject();
    QCOMPARE(copy.value(text("origin")).toString(), mac.preferences());
    const QJsonArray differences = copy.value(text("differences")).toArray();
    QCOMPARE(differences.size(), 1);
    QCOMPARE(differences.at(0).toObject().value(text("name")).toString(), text("strLoginDomainList"));
    QCOMPARE(mac.drift("wanted", {text("--json")}).json().value(text("result")).toString(), text("same"));
    mac.reportIs("damaged");
    const PctResult unknown = mac.drift("wanted", {text("--json")});
    QCOMPARE(unknown.exitCode, 2);
    QCOMPARE(unknown.json().value(text("result")).toString(), text("unknown"));
    QCOMPARE(unknown.json().value(text("unread")).toArray().size(), 1);
}

void tst_PctDrift::anyFileWithSettingsCanBeCompared()
{
    const DriftingMac mac;
    TestFiles::write(mac.preferences(), managedSettings());
    for (const char *style : {"payload", "mcx"}) {
        QVERIFY(!mac.profileOf("wanted", {text("--style"), text(style)}).isEmpty());
        QVERIFY(QFile::exists(mac.output()));
        QCOMPARE(mac.drift("out.mobileconfig").exitCode, 0);
    }
    const QStringList document{text("config"),    text("new"),
                               text("--product"), text("editor"),
                               text("--config"),  mac.file(text("wanted")),
                               text("--output"),  mac.file(text("document"))};
    QCOMPARE(mac.run(document).exitCode, 0);
    QCOMPARE(mac.drift("document").exitCode, 0);
}

void tst_PctDrift::listedProfilesAreCompared_data()
{
    QTest::addColumn<QString>("style");
    QTest::newRow("payload") << text("payload");
    QTest::newRow("managed preferences") << text("mcx");
}

void tst_PctDrift::listedProfilesAreCompared()
{
    QFETCH(QString, style);
    DriftingMac mac;
    mac.setEnvironment(text("APPLE_LIKE_ROOT"), text("1"));
    mac.install(mac.profileOf("wanted", {text("--style"), style}));
    mac.restoreTool(text("profiles"));
    mac.restoreTool(text("system_profiler"));
    const PctResult same = mac.drift("wanted");
    QVERIFY2(same.exitCode == 0, said(same).constData());
    const PctResult drift = mac.drift("other");
    QCOMPARE(drift.exitCode, 1);
    QVERIFY2(drift.out.startsWith("profile \"office.example\": strLoginDomainList: "), drift.out.constData());
}

void tst_PctDrift::everyCopyCounts()
{
    const DriftingMac mac;
    TestFiles::write(mac.preferences(), managedSettings());
    TestFiles::write(mac.preferences(user()), managedSettings().replace("a.example", "user.example"));
    const PctResult drift = mac.drift("wanted");
    QCOMPARE(drift.exitCode, 1);
    QVERIFY2(drift.out.startsWith(mac.preferences(user()).toUtf8()), drift.out.constData());
    TestFiles::write(mac.preferences(user()), managedSettings());
    QCOMPARE(mac.drift("wanted").exitCode, 0);
}

void tst_PctDrift::anUnreadPlaceIsNeverTheSame_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QByteArray>("listing");
    QTest::addColumn<QByteArray>("reason");
    const QByteArray none = "echo 'There are no configuration profiles installed'";
    const QByteArray ours = reportedProfile("office.example", {reportedPayload(domain, payloadUuid)});
    const QByteArray another = reportedProfile("second.example", {reportedPayload(domain, "x")});
    QTest::newRow("no report") << QByteArray("damaged") << none
                               << QByteArray("the report of system_profiler");
    QTest::newRow("the section of the device is not shown")
        << report({section("User Configuration Profiles (501)", {})}) << none
        << QByteArray("no profile that ");
    QTest::newRow("another profile is reported")
        << report({section(device, {ours, another})}) << none
        << QByteArray("the settings of the profile \"second.example\"");
    QTest::newRow("the report is of another payload")
        << report({section(device, {another})}) << none << QByteArray("no profile that ");
    QTest::newRow("no list") << report({section(device, {ours})}) << QByteArray("exit 3")
                             << QByteArray("the installed profiles cannot be listed");
    QTest::newRow("a list cut off") << report({section(device, {ours})}) << QByteArray("echo '<plist><dict>'")
                                    << QByteArray("the installed profiles cannot be listed");
}

void tst_PctDrift::anUnreadPlaceIsNeverTheSame()
{
    QFETCH(QByteArray, xml);
    QFETCH(QByteArray, listing);
    QFETCH(QByteArray, reason);
    const DriftingMac mac;
    TestFiles::write(mac.preferences(), managedSettings());
    QCOMPARE(mac.drift("wanted").exitCode, 0);
    mac.reportIs(xml);
    mac.replaceTool(text("profiles"), listing);
    const PctResult result = mac.drift("wanted");
    QVERIFY2(cannotTell(result, reason), said(result).constData());
}

void tst_PctDrift::aDifferenceIsDriftWhateverElseIsUnread()
{
    const DriftingMac mac;
    TestFiles::write(mac.preferences(), managedSettings());
    mac.reportIs("damaged");
    const PctResult drift = mac.drift("other");
    QCOMPARE(drift.exitCode, 1);
    QVERIFY2(drift.out.contains("c.example") && drift.err.contains("the report of system_profiler"),
             said(drift).constData());
}

void tst_PctDrift::filesOutOfReachCannotBeTold()
{
    const DriftingMac mac;
    TestFiles::write(mac.preferences(), managedSettings());
    // Where a folder is expected there is a link that leads round in a circle.
    const QString folder = QFileInfo(mac.preferences(user())).path();
    QVERIFY(QFile::link(folder, folder));
    const PctResult result = mac.drift("wanted");
    QVERIFY2(cannotTell(result, "cannot be read ("), said(result).constData());
    QVERIFY(QFile::remove(folder));
    TestFiles::write(mac.preferences(), "<plist><dict>");
    QVERIFY(cannotTell(mac.drift("wanted"), "settings.plist cannot be read ("));
}

void tst_PctDrift::nothingInstalledCannotBeTold()
{
    const DriftingMac mac;
    mac.reportIs(report({}));
    QVERIFY(cannotTell(mac.drift("wanted"), "no settings of the Pelix PDF Editor are installed"));
    TestFiles::write(mac.preferences(), managedSettings());
    const PctResult reader =
        mac.run({text("drift"), text("--product"), text("reader"), mac.file(text("wanted")), text("--json")});
    QCOMPARE(reader.exitCode, 2);
    QVERIFY2(reader.err.contains("use --product editor"), reader.err.constData());
}

void tst_PctDrift::aFileThatCannotBeReadIsTrouble()
{
    const DriftingMac mac;
    TestFiles::write(mac.preferences(), managedSettings());
    const PctResult missing = mac.drift("missing");
    QCOMPARE(missing.exitCode, 2);
    QVERIFY2(missing.err.contains("missing: does not exist"), missing.err.constData());
    QCOMPARE(mac.run({text("drift"), mac.file(text("wanted"))}).exitCode, 2);
    QCOMPARE(mac.drift("missing", {text("--json")}).json().value(text("result")).toString(), text("unknown"));
}

void tst_PctDrift::whatNoProfileCarriesIsNoDrift()
{
    const DriftingMac mac;
    TestFiles::write(mac.preferences(), managedSettings());
    TestFiles::write(mac.file(text("wanted")),
                     wantedJson().replace("{\"bShow", "{\"bSetAsDefaultViewer\": true, \"bShow"));
    QCOMPARE(mac.drift("wanted").exitCode, 0);
}

/// A profile is installed, replaced by another, and compared before and after.
void tst_PctDrift::theFlowOfAManagementIsSeen()
{
    DriftingMac mac;
    mac.setEnvironment(text("APPLE_LIKE_ROOT"), text("1"));
    mac.restoreTool(text("profiles"));
    mac.restoreTool(text("system_profiler"));
    mac.install(mac.profileOf("wanted", {text("--for"), text("jamf"), text("--stable")}));
    QCOMPARE(mac.drift("wanted").exitCode, 0);
    mac.install(mac.profileOf("other", {text("--for"), text("jamf"), text("--stable")}));
    QCOMPARE(mac.drift("wanted").exitCode, 1);
    QCOMPARE(mac.drift("other").exitCode, 0);
    mac.setEnvironment(text("APPLE_LIKE_ROOT"), text("0"));
    mac.listsNothing();
    QVERIFY(cannotTell(mac.drift("other"), "the settings of the profile \"office.example\""));
}

QTEST_GUILESS_MAIN(tst_PctDrift)
#include "tst_PctDrift.moc"
