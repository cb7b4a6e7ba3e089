// SPDX-License-Identifier: Apache-2.0
#include "config/Product.h"
#include "profile/CProfileGenerator.h"
#include "profile/ReadProfile.h"
#include "tests/profile/CocoaCalls.h"
#include "tests/profile/LogLines.h"
#include "tests/profile/ProfileSamples.h"
#include "tests/profile/StandIns.h"
#include "tests/support/ProblemText.h"

#include <QtTest>

using namespace ProfileSamples;

namespace {

const QString profiles = QStringLiteral("profiles");
const QString security = QStringLiteral("security");

QString profileIn(const QTemporaryDir &folder)
{
    const QString path = folder.filePath(QStringLiteral("a.mobileconfig"));
    TestFiles::write(path, "profile\n");
    return path;
}

/// The Editor's profile behind another application's of that many mebibytes.
QByteArray largeListing(int mebibytes)
{
    const QByteArray filling = dictionary({"A", string(QByteArray(mebibytes * 1024 * 1024, 'x'))});
    return listing(installedProfile("com.example.other", "o.1", "UO", filling) +
                   installedProfile(editorBundle, "e.1", "UE", dictionary({})));
}

} // namespace

/// How the system's commands are called and understood; scripts stand in for them.
class tst_ProfileCommands : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (QFileInfo::exists(QStringLiteral("/usr/bin/profiles")))
            QSKIP("this system has the commands themselves");
    }

    void theInstalledProfilesAreAskedForAsXml()
    {
        StandIns commands;
        commands.setOutput(profiles, listing(dictionary({}) + dictionary({})));
        QCOMPARE(CocoaCalls::loadSystemProfiles(), 2);
        QCOMPARE(commands.arguments(profiles),
                 QByteArray("show\n-output\nstdout-xml\n-type\nconfiguration\n"));
    }

    void aFailedListingGivesNothing()
    {
        StandIns commands;
        commands.set(profiles, "echo no rights >&2\nexit 3\n");
        QCOMPARE(CocoaCalls::loadSystemProfiles(), -1);
        EditorXmlData data;
        const LogLines log;
        QVERIFY(!CProfileGenerator::ImportProfile(&data, true));
        QVERIFY(data == EditorXmlData());
        QVERIFY2(log.has(QStringLiteral("warning Failed to load system profiles.")), qPrintable(log.all()));
    }

    void nothingInstalledIsASentenceAndGivesNothing()
    {
        StandIns commands;
        commands.setOutput(profiles, "There are no configuration profiles installed\n");
        QCOMPARE(CocoaCalls::loadSystemProfiles(), -1);
    }

    void aSentenceBehindAListIsPassedOver()
    {
        StandIns commands;
        const QByteArray sentence("\nThere are no configuration profiles installed in the system domain\n");
        commands.setOutput(profiles, largeListing(1) + sentence);
        QCOMPARE(CocoaCalls::loadSystemProfiles(), 2);
        commands.setOutput(profiles, propertyList("<dict/>") + sentence);
        QCOMPARE(CocoaCalls::loadSystemProfiles(), -1);
        EditorXmlData data;
        const Result<bool> installed = readInstalledProfile(data, Product::editor());
        QVERIFY(installed && !*installed);
    }

    void theLogSaysWhoSeesTheProfilesOfTheDevice()
    {
        StandIns commands;
        commands.setOutput(profiles, "There are no configuration profiles installed for user 'jane'\n");
        EditorXmlData data;
        const LogLines log;
        QVERIFY(!CProfileGenerator::ImportProfile(&data, true));
        QVERIFY2(log.has(QStringLiteral(
                     "debug Profiles that were installed for the device are listed for root only.")),
                 qPrintable(log.all()));
    }

    void withoutTheCommandThereIsNothing()
    {
        const StandIns commands;
        QCOMPARE(CocoaCalls::loadSystemProfiles(), -1);
    }

    void aListingOfManyMebibytesIsRead()
    {
        StandIns commands;
        commands.setOutput(profiles, largeListing(3));
        QCOMPARE(CocoaCalls::loadSystemProfiles(), 2);
        EditorXmlData data;
        QVERIFY(CProfileGenerator::ImportProfile(&data, true));
        QCOMPARE(data.payloadInfo.PayloadUUID, QStringLiteral("UE"));
    }

    void aListingThatIsTooLargeIsAFailureThatIsTold()
    {
        StandIns commands;
        commands.setOutput(profiles, largeListing(33));
        EditorXmlData data;
        const LogLines log;
        QCOMPARE(problemText(readInstalledProfile(data, Product::editor())),
                 QStringLiteral("/usr/bin/profiles printed more than 32 MiB"));
        QVERIFY(!CProfileGenerator::ImportProfile(&data, true));
        QVERIFY2(log.has(QStringLiteral("warning Failed to load system profiles.")), qPrintable(log.all()));
        QVERIFY(data == EditorXmlData());
    }

    void onlyAFailureOfTheCommandIsAProblem_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<QString>("problem");
        QTest::newRow("fails") << QByteArray("echo no rights >&2\nexit 3\n")
                               << QStringLiteral("/usr/bin/profiles ended with exit code 3: no rights");
        QTest::newRow("crashes") << QByteArray("kill -9 $$\n")
                                 << QStringLiteral("/usr/bin/profiles was ended by a signal");
        QTest::newRow("nothing installed")
            << QByteArray("echo There are no configuration profiles installed\n") << QString();
    }

    void onlyAFailureOfTheCommandIsAProblem()
    {
        QFETCH(QByteArray, script);
        StandIns commands;
        commands.set(profiles, script);
        EditorXmlData data;
        const Result<bool> installed = readInstalledProfile(data, Product::editor());
        QVERIFY(!installed || !*installed);
        QTEST(problemText(installed), "problem");
    }

    void aNullRecordIsRefused()
    {
        const LogLines log;
        QVERIFY(!CProfileGenerator::ImportProfile(nullptr, true));
        QVERIFY2(log.has(QStringLiteral("warning Invalid EditorXmlData.")), qPrintable(log.all()));
    }

    void aPolicyThatIsNotSetReadsAsOffInTheWindowAlone()
    {
        StandIns commands;
        const QByteArray unset = preference("bMIPCheckPolicyOnDocSave", {"Mode", string("")});
        commands.setOutput(profiles, listing(installedProfile(editorBundle, "e.1", "UE",
                                                              dictionary({"Preferences", array(unset)}))));
        EditorXmlData data;
        data.bMIPCheckPolicySet = true;
        data.nMIPCheckPolicyOnDocSave = 1;
        const Result<bool> installed = readInstalledProfile(data, Product::editor());
        QVERIFY(installed && *installed);
        QCOMPARE(data.bMIPCheckPolicySet, false);
        QCOMPARE(data.nMIPCheckPolicyOnDocSave, -1);
        QVERIFY(CProfileGenerator::ImportProfile(&data, true));
        QCOMPARE(data.bMIPCheckPolicySet, true);
        QCOMPARE(data.nMIPCheckPolicyOnDocSave, 0);
    }

    void theInstalledProfileFillsTheRecord()
    {
        StandIns commands;
        commands.setOutput(
            profiles,
            listing(installedProfile(
                editorBundle, "e.1", "UE",
                dictionary({"Preferences", array(preference("HideMyApps", {"Mode", string("1")}))}))));
        EditorXmlData data;
        QVERIFY(CProfileGenerator::ImportProfile(&data, true));
        QVERIFY(data.bHideMyApps);
        QCOMPARE(data.payloadInfo.PayloadUUID, QStringLiteral("UE"));
        QVERIFY(!CProfileGenerator::ImportProfile(&data, false));
    }

    void theInstalledIdentityIsFound()
    {
        StandIns commands;
        commands.setOutput(profiles, listing(installedProfile(readerBundle, "r.1", "UR", dictionary({})) +
                                             installedProfile(editorBundle, "e.1", "UE", dictionary({}))));
        QString uuid;
        QCOMPARE(CProfileGenerator::GetSysProfileIdentifier(&uuid, true), QStringLiteral("e.1"));
        QCOMPARE(uuid, QStringLiteral("UE"));
        QCOMPARE(CProfileGenerator::GetSysProfileIdentifier(nullptr, false), QStringLiteral("r.1"));
    }

    void aMatchWithoutIdentifierSetsTheUuidAndTheSearchGoesOn()
    {
        StandIns commands;
        commands.setOutput(profiles, listing(installedProfile(editorBundle, "", "U1", dictionary({})) +
                                             installedProfile(editorBundle, "e.2", "U2", dictionary({}))));
        QString uuid;
        QCOMPARE(CProfileGenerator::GetSysProfileIdentifier(&uuid, true), QStringLiteral("e.2"));
        QCOMPARE(uuid, QStringLiteral("U2"));

        commands.setOutput(profiles, listing(installedProfile(editorBundle, "", "U1", dictionary({}))));
        QCOMPARE(CProfileGenerator::GetSysProfileIdentifier(&uuid, true), QString());
        QCOMPARE(uuid, QStringLiteral("U1"));
    }

    void noInstalledIdentityIsSaid()
    {
        StandIns commands;
        commands.setOutput(profiles, listing(dictionary({})));
        QString uuid;
        const LogLines log;
        QCOMPARE(CProfileGenerator::GetSysProfileIdentifier(&uuid, true), QString());
        QCOMPARE(uuid, QString());
        QVERIFY2(log.has(QStringLiteral("warning No matching profile identifier found for bundle ID: ") +
                         QString::fromUtf8(editorBundle)),
                 qPrintable(log.all()));
    }

    void twoIdentitiesAndACountLineAreTwoNames()
    {
        StandIns commands;
        commands.setOutput(security, "  1) 0123 \"Developer ID: Jane \xc3\x84 (AB12)\"\n"
                                     "  2) 4567 \"Second\"\n     2 valid identities found\n\n");
        const QStringList expected = {QStringLiteral("Developer ID: Jane Ä (AB12)"),
                                      QStringLiteral("Second")};
        QCOMPARE(CProfileGenerator::GetSignIDs(), expected);
        QCOMPARE(commands.arguments(security), QByteArray("find-identity\n-v\n-p\ncodesigning\n"));
    }

    void identityLinesEndBeforeTheirLastCharacter_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QStringList>("names");
        QTest::newRow("text behind the quote")
            << QByteArray("1) 01 \"Jane\" (expired)") << QStringList{QStringLiteral("Jane\" (expired")};
        QTest::newRow("a lone quote") << QByteArray("1) 01 \"") << QStringList{QString()};
        QTest::newRow("twice the same")
            << QByteArray("\"a\"\n\"a\"") << QStringList{QStringLiteral("a"), QStringLiteral("a")};
        QTest::newRow("none") << QByteArray("     0 valid identities found") << QStringList();
    }

    void identityLinesEndBeforeTheirLastCharacter()
    {
        QFETCH(QByteArray, line);
        StandIns commands;
        commands.setOutput(security, line + "\n");
        QTEST(CProfileGenerator::GetSignIDs(), "names");
    }

    void aFailedListingOfIdentitiesIsEmpty()
    {
        StandIns commands;
        commands.set(security, "echo '\"Jane\"'\nexit 1\n");
        const LogLines log;
        QCOMPARE(CProfileGenerator::GetSignIDs(), QStringList());
        QVERIFY2(log.has(QStringLiteral("warning Failed to retrieve sign IDs.")), qPrintable(log.all()));
        const QString problem = problemText(CProfileGenerator::FindSignIDs().names);
        QVERIFY2(problem.startsWith(QStringLiteral("/usr/bin/security ended with exit code 1")),
                 qPrintable(problem));
    }

    void noIdentityIsNoProblem()
    {
        StandIns commands;
        commands.setOutput(security, "     0 valid identities found\n");
        const Result<QStringList> names = CProfileGenerator::FindSignIDs().names;
        QVERIFY(names);
        QCOMPARE(*names, QStringList());
    }

    void signingNeedsAPathAndAnIdentity()
    {
        const LogLines log;
        QVERIFY(!CProfileGenerator::SignProfile(QString(), QStringLiteral("Jane")));
        QVERIFY(!CProfileGenerator::SignProfile(QStringLiteral("/a"), QString()));
        QCOMPARE(log.all().count(QStringLiteral("warning Invalid filepath or signID.")), 2);
        QVERIFY(!CProfileGenerator::CheckProfileSign(QString()));
        QVERIFY2(log.has(QStringLiteral("warning Invalid filepath.")), qPrintable(log.all()));
    }

    void signingHasInputAndOutputInOneFile()
    {
        StandIns commands;
        commands.set(security,
                     "if [ \"$2\" = -D ]; then echo profile; else cp \"$0.arguments\" \"$6.call\"; fi\n");
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a b.mobileconfig"));
        TestFiles::write(path, "profile\n");
        const LogLines log;
        QVERIFY(CProfileGenerator::SignProfile(path, QStringLiteral("Jane \"J\" Doe")));
        const QByteArray name = QFile::encodeName(path);
        QCOMPARE(TestFiles::read(path + QStringLiteral(".call")),
                 "cms\n-S\n-N\nJane \"J\" Doe\n-i\n" + name + "\n-o\n" + name + "\n");
        QCOMPARE(commands.arguments(security), "cms\n-D\n-i\n" + name + "\n");
        QVERIFY2(log.has(QStringLiteral("debug Profile signed successfully.")), qPrintable(log.all()));
    }

    void aRejectedIdentityIsReportedWithWhatTheCommandSaid()
    {
        StandIns commands;
        commands.set(security, "echo 'no such identity' >&2\nexit 1\n");
        const QTemporaryDir folder;
        const LogLines log;
        QVERIFY(!CProfileGenerator::SignProfile(profileIn(folder), QStringLiteral("Jane")));
        QVERIFY2(log.has(QStringLiteral("warning Failed to sign profile: no such identity")),
                 qPrintable(log.all()));
    }

    void aSignatureThatDoesNotVerifyIsAFailure()
    {
        StandIns commands;
        commands.set(security, "[ \"$2\" = -S ] && exit 0\necho damaged >&2\nexit 1\n");
        const QTemporaryDir folder;
        const LogLines log;
        QVERIFY(!CProfileGenerator::SignProfile(profileIn(folder), QStringLiteral("Jane")));
        QVERIFY2(log.has(QStringLiteral("warning Profile is not signed or invalid: damaged")),
                 qPrintable(log.all()));
        QVERIFY2(log.has(QStringLiteral("warning Profile signing failed.")), qPrintable(log.all()));
    }
};

QTEST_GUILESS_MAIN(tst_ProfileCommands)
#include "tst_ProfileCommands.moc"
