// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/ProfileRunner.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

namespace {

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

const QString domain = text("com.pelix-software.Pelix.PDF.Editor.settings");
const QString managed = text("com.apple.ManagedClient.preferences");

QStringList forService(const char *word, const QStringList &more = {})
{
    return QStringList{text("--for"), text(word)} + more;
}

} // namespace

/// What `pct profile --for` knows of each service that manages devices.
class tst_PctServices : public QObject
{
    Q_OBJECT

private slots:
    void theServicePicksTheStyle_data();
    void theServicePicksTheStyle();
    void theServiceWarnsOfWhatDoesNotWork_data();
    void theServiceWarnsOfWhatDoesNotWork();
    void whatTheServiceRefusesIsRefused_data();
    void whatTheServiceRefusesIsRefused();
    void aProfileLargerThanTheServiceTakesIsRefused();
};

void tst_PctServices::theServicePicksTheStyle_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("type");
    QTest::addColumn<bool>("hasVersion");
    QTest::newRow("jamf") << forService("jamf") << managed << true;
    QTest::newRow("intune") << forService("intune") << domain << false;
    QTest::newRow("fleet") << forService("fleet") << domain << false;
    QTest::newRow("kandji") << forService("kandji") << domain << false;
    QTest::newRow("workspace-one") << forService("workspace-one") << domain << true;
    QTest::newRow("apple-business") << forService("apple-business") << managed << true;
    QTest::newRow("a style that is given goes first")
        << forService("jamf", {text("--style"), text("payload")}) << domain << false;
    QTest::newRow("the other style") << forService("intune", {text("--style"), text("mcx")}) << managed
                                     << true;
}

void tst_PctServices::theServicePicksTheStyle()
{
    QFETCH(QStringList, options);
    QFETCH(QString, type);
    QFETCH(bool, hasVersion);
    const ProfileRunner runner;
    const PctResult made = runner.makeProfile(true, options + QStringList{text("--json")});
    QVERIFY2(made.exitCode == 0, made.err.constData());
    const QJsonObject payload = payloadOf(runner.propertyList(runner.output()));
    QCOMPARE(payload.value(text("PayloadType")).toString(), type);
    QCOMPARE(payload.contains(text("PayloadVersion")), hasVersion);
    QCOMPARE(made.json().value(text("style")).toString(), type == domain ? text("payload") : text("mcx"));
    QCOMPARE(made.json().value(text("for")).toString(), options.at(1));
}

void tst_PctServices::theServiceWarnsOfWhatDoesNotWork_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("warning"); // empty: there is none
    const QStringList payload{text("--style"), text("payload")};
    QTest::newRow("jamf") << forService("jamf") << QByteArray();
    QTest::newRow("jamf, unsigned payload")
        << forService("jamf", payload) << QByteArray("Jamf Pro loses payloads of a type");
    QTest::newRow("jamf, signed") << forService("jamf", {text("--sign"), text("Deployment")})
                                  << QByteArray("Jamf Pro shows a signed profile without letting anybody");
    QTest::newRow("intune") << forService("intune") << QByteArray();
    QTest::newRow("intune, scope") << forService("intune", {text("--scope"), text("user")})
                                   << QByteArray("Intune goes by the channel of its policy");
    QTest::newRow("intune, token") << forService("intune",
                                                 {text("--description"), text("for {{serialnumber}}")})
                                   << QByteArray("Intune replaces {{...}}");
    QTest::newRow("fleet") << forService("fleet") << QByteArray();
    QTest::newRow("kandji") << forService("kandji") << QByteArray("Kandji puts an identifier of its own");
    QTest::newRow("workspace-one") << forService("workspace-one")
                                   << QByteArray("\"pct plist --form workspace-one\"");
    QTest::newRow("apple-business") << forService("apple-business") << QByteArray();
    QTest::newRow("apple-business, payload")
        << forService("apple-business", payload) << QByteArray("Apple Business checks profiles");
    QTest::newRow("no service") << payload << QByteArray();
}

void tst_PctServices::theServiceWarnsOfWhatDoesNotWork()
{
    QFETCH(QStringList, options);
    QFETCH(QByteArray, warning);
    const ProfileRunner runner;
    if (options.contains(text("Deployment")))
        runner.addIdentity(text("Deployment"));
    const PctResult made = runner.makeProfile(true, options);
    QVERIFY2(made.exitCode == 0, made.err.constData());
    QCOMPARE(made.err.count(": warning: "), warning.isEmpty() ? 0 : 1);
    QCOMPARE(made.err.contains(" takes it unsigned"),
             options.contains(text("--for")) && !options.contains(text("--sign")));
    QVERIFY2(made.err.contains(warning), made.err.constData());
    const PctResult asJson =
        runner.makeProfile(true, options + QStringList{text("--force"), text("--json"), text("-q")});
    QCOMPARE(asJson.out.contains("\"management-service\""), !warning.isEmpty());
    QCOMPARE(asJson.err, QByteArray());
}

void tst_PctServices::whatTheServiceRefusesIsRefused_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("reason");
    const QStringList isSigned{text("--sign"), text("Deployment")};
    for (const auto &[word, name] : {std::pair("fleet", "Fleet"), std::pair("workspace-one", "Workspace ONE"),
                                     std::pair("apple-business", "Apple Business")})
        QTest::newRow(word) << forService(word, isSigned)
                            << QByteArray(name) + " takes no signed profile; leave out the signature";
    QTest::newRow("without a name") << forService("fleet", {text("--display-name"), text("  ")})
                                    << QByteArray("Fleet takes no profile without a name");
}

void tst_PctServices::whatTheServiceRefusesIsRefused()
{
    QFETCH(QStringList, options);
    QFETCH(QByteArray, reason);
    const ProfileRunner runner;
    runner.addIdentity(text("Deployment"));
    TestFiles::write(runner.output(), "as it was");
    const PctResult made = runner.makeProfile(true, options + QStringList{text("--force")});
    QVERIFY2(made.isOneLineRefusal() && made.err.contains(reason), made.err.constData());
    QCOMPARE(TestFiles::read(runner.output()), QByteArray("as it was"));
}

void tst_PctServices::aProfileLargerThanTheServiceTakesIsRefused()
{
    const ProfileRunner runner;
    const QString settings = runner.file(text("settings.json"));
    const auto sizedTo = [&](int length) {
        TestFiles::write(settings, "{\"product\": \"editor\", \"settings\": {\"strBuiltInPermList\": \"" +
                                       QByteArray(length, 'x') + "\"}}");
        return runner.makeProfile(
            true, forService("intune", {text("--identifier"), text("org.example.pelix"), text("--stable"),
                                        text("--config"), settings, text("--force")}));
    };
    QCOMPARE(sizedTo(1000).exitCode, 0);
    const int rest = static_cast<int>(TestFiles::read(runner.output()).size()) - 1000;
    const PctResult largest = sizedTo(1000000 - rest);
    QVERIFY2(largest.exitCode == 0, largest.err.constData());
    const QByteArray profile = TestFiles::read(runner.output());
    QCOMPARE(static_cast<int>(profile.size()), 1000000);
    const PctResult larger = sizedTo(1000001 - rest);
    QVERIFY2(larger.isOneLineRefusal() && larger.err.contains("Intune takes no more than 1,000,000 bytes"),
             larger.err.constData());
    QCOMPARE(TestFiles::read(runner.output()), profile);
}

QTEST_GUILESS_MAIN(tst_PctServices)
#include "tst_PctServices.moc"
