// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/ProfileRunner.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

#include <QJsonArray>

#include <csignal>

namespace {

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

const QStringList ellipticKey{QStringLiteral("ec"), QStringLiteral("-pkeyopt"),
                              QStringLiteral("ec_paramgen_curve:P-256")};

} // namespace

/// `pct identities` and `pct profile --sign`.
class tst_PctSigning : public QObject
{
    Q_OBJECT

private slots:
    void identitiesAreListedByName();
    void withoutIdentitiesTheListIsEmpty();
    void whatIsWrongWithAnIdentityIsPassedOn_data();
    void whatIsWrongWithAnIdentityIsPassedOn();
    void identitiesThatCannotBeListedAreAFailure_data();
    void identitiesThatCannotBeListedAreAFailure();
    void aMissingSecurityCommandIsNamed();
    void aSignedProfileIsVerifiedByOthers_data();
    void aSignedProfileIsVerifiedByOthers();
    void aSignedProfileCanBeASource();
    void aSignedProfileMayBeLargerThanAMebibyte();
    void aCommandThatTruncatesItsOutputFirstSignsTheProfile();
    void anUnknownIdentityIsRefused();
    void aSigningThatFailsChangesNothing_data();
    void aSigningThatFailsChangesNothing();
    void anUnsignedResultOfASigningIsRefused();
    void aSigningThatIsEndedLeavesNothing_data();
    void aSigningThatIsEndedLeavesNothing();
};

void tst_PctSigning::identitiesAreListedByName()
{
    const ProfileRunner runner;
    runner.addIdentity(text("Pelix Deployment"));
    runner.addIdentity(text("Signatur für Geräte"), ellipticKey);
    const PctResult listed = runner.run({text("identities")});
    QCOMPARE(listed.exitCode, 0);
    QCOMPARE(listed.err, QByteArray());
    QCOMPARE(QString::fromUtf8(listed.out), text("Pelix Deployment\nSignatur für Geräte\n"));
    const QJsonArray names{text("Pelix Deployment"), text("Signatur für Geräte")};
    QCOMPARE(runner.run({text("identities"), text("--json")}).json().value(text("identities")).toArray(),
             names);
}

void tst_PctSigning::withoutIdentitiesTheListIsEmpty()
{
    const ProfileRunner runner;
    const PctResult listed = runner.run({text("identities")});
    QCOMPARE(listed.exitCode, 0);
    QCOMPARE(listed.out + listed.err, QByteArray());
    QVERIFY(runner.run({text("identities"), text("--json")}).json().value(text("identities")).isArray());
}

void tst_PctSigning::whatIsWrongWithAnIdentityIsPassedOn_data()
{
    QTest::addColumn<QString>("change"); // of key.pem and certificate.pem in the folder of the identities
    QTest::addColumn<QByteArray>("said");
    QTest::newRow("wrong password for the key")
        << text("openssl pkey -in key.pem -aes256 -passout pass:right > "
                "locked.key; cat certificate.pem locked.key > other.pem")
        << QByteArray("other.pem: its private key cannot be read; is "
                      "PCT_IDENTITIES_PASSWORD right?; it is left out");
    QTest::newRow("wrong password for all of it")
        << text(
               "openssl pkcs12 -export -in certificate.pem -inkey key.pem -passout pass:right -out other.p12")
        << QByteArray("other.p12: cannot be read as an identity; is PCT_IDENTITIES_PASSWORD right?");
    QTest::newRow("no key file") << text("cp certificate.pem other.crt")
                                 << QByteArray(
                                        "other.key: cannot be opened: No such file or directory; it is "
                                        "left out");
    QTest::newRow("key that others can read")
        << text("cat key.pem certificate.pem > other.pem; chmod 644 other.pem")
        << QByteArray("other.pem: others can read this private key; chmod 600 keeps it private");
}

void tst_PctSigning::whatIsWrongWithAnIdentityIsPassedOn()
{
    QFETCH(QString, change);
    QFETCH(QByteArray, said);
    ProfileRunner runner;
    runner.addIdentity(text("Good"));
    runner.addIdentity(text("Other"));
    const QString folder = QFileInfo(runner.identityFile(text("Other"))).path();
    TestFiles::outputOf(text("sh"), {text("-ec"),
                                     text("umask 077; cd \"$1\"; openssl pkey -in \"$2\" > key.pem\n"
                                          "openssl x509 -in \"$2\" > certificate.pem; rm \"$2\"\n") +
                                         change + text("\nrm -f key.pem certificate.pem locked.key"),
                                     text("sh"), folder, runner.identityFile(text("Other"))});
    runner.setEnvironment(text("PCT_IDENTITIES_PASSWORD"), text("wrong"));
    const QByteArray start = "pct: security: warning: " + folder.toUtf8() + '/' + said;

    const PctResult listed = runner.run({text("identities")});
    QCOMPARE(listed.exitCode, 0);
    QVERIFY(listed.out.startsWith("Good\n"));
    QVERIFY2(listed.err.startsWith(start) && listed.messages().size() == 1, listed.err.constData());
    const QJsonArray warnings =
        runner.run({text("identities"), text("--json")}).json().value(text("warnings")).toArray();
    QCOMPARE(warnings.size(), 1);
    QCOMPARE(warnings.at(0).toObject().value(text("code")).toString(), text("signing-identity"));

    const PctResult made = runner.makeProfile(true, {text("--sign"), text("Good")});
    QCOMPARE(made.exitCode, 0);
    QVERIFY2(made.err.startsWith(start) && made.messages().size() == 1, made.err.constData());
    QVERIFY(!runner.verifiedContent(runner.output()).isEmpty());
}

void tst_PctSigning::identitiesThatCannotBeListedAreAFailure_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QByteArray>("cause");
    QTest::newRow("not started") << QByteArray("") << QByteArray("/usr/bin/security could not be started");
    QTest::newRow("crashed") << QByteArray("kill -9 $$")
                             << QByteArray("/usr/bin/security was ended by a signal");
    QTest::newRow("bad exit") << QByteArray("echo '\"Jane\"'; echo the keychain is locked >&2; exit 51")
                              << QByteArray("exit code 51: the keychain is locked");
    QTest::newRow("endless") << QByteArray("head -c 2000000 /dev/zero")
                             << QByteArray("/usr/bin/security printed more than 1 MiB");
}

void tst_PctSigning::identitiesThatCannotBeListedAreAFailure()
{
    QFETCH(QByteArray, script);
    QFETCH(QByteArray, cause);
    const ProfileRunner runner;
    if (script.isEmpty())
        runner.breakTool(text("security"));
    else
        runner.replaceTool(text("security"), script);
    for (const QStringList &options : {QStringList(), QStringList{text("--json")}}) {
        const PctResult listed = runner.run(QStringList{text("identities")} + options);
        QVERIFY2(listed.isOneLineRefusal() && listed.err.contains(QByteArray(cause + ")")),
                 QByteArray(listed.out + listed.err).constData());
    }
}

void tst_PctSigning::aMissingSecurityCommandIsNamed()
{
    const ProfileRunner runner;
    runner.removeTool(text("security"));
    for (const PctResult &result :
         {runner.run({text("identities")}), runner.makeProfile(true, {text("--sign"), text("Anyone")})}) {
        QVERIFY2(result.isOneLineRefusal(), result.err.constData());
        QVERIFY2(result.err.startsWith("pct: /usr/bin/security: this command was not found"),
                 result.err.constData());
    }
}

void tst_PctSigning::aSignedProfileIsVerifiedByOthers_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("key");
    QTest::newRow("RSA") << text("Pelix Deployment") << QStringList{text("rsa:2048")};
    QTest::newRow("elliptic curve") << text("Signatur für Geräte") << ellipticKey;
}

void tst_PctSigning::aSignedProfileIsVerifiedByOthers()
{
    QFETCH(QString, name);
    QFETCH(QStringList, key);
    const ProfileRunner runner;
    runner.addIdentity(name, key);
    const PctResult made =
        runner.makeProfile(true, {text("--identifier"), text("a.b"), text("--sign"), name});
    QVERIFY2(made.exitCode == 0 && made.err.isEmpty(), made.err.constData());
    const QJsonObject profile = runner.propertyList(runner.verifiedContent(runner.output()));
    QCOMPARE(profile.value(text("PayloadIdentifier")).toString(), text("a.b"));
    const QByteArray digests = runner.digests(runner.output());
    QVERIFY2(digests.contains("sha256") && !digests.contains("sha1"), digests.constData());
    QCOMPARE(runner.files(), QStringList{text("out.mobileconfig")});

    const PctResult shown = runner.run({text("show"), text("--json"), runner.output()});
    QCOMPARE(shown.json().value(text("signer")).toString(), name);
    QCOMPARE(shown.json().value(text("kind")).toString(), text("profile"));
    const PctResult readable = runner.run({text("show"), runner.output()});
    QCOMPARE(readable.messages(),
             QStringList{text("pct: %1: is signed by \"%2\"; whether that is to be trusted was not checked")
                             .arg(runner.output(), name)});
}

void tst_PctSigning::aSignedProfileCanBeASource()
{
    const ProfileRunner runner;
    runner.addIdentity(text("Pelix Deployment"));
    QCOMPARE(runner.makeProfile(true, {text("--sign"), text("Pelix Deployment")}).exitCode, 0);
    QVERIFY(QFile::rename(runner.output(), runner.file(text("signed"))));
    const PctResult made = runner.makeProfile(true, {text("--from"), text("signed")});
    QVERIFY2(made.exitCode == 0, made.err.constData());
    const QJsonObject profile = runner.propertyList(runner.output());
    const QJsonObject source = runner.propertyList(runner.verifiedContent(runner.file(text("signed"))));
    QVERIFY(!profile.value(text("PayloadUUID")).toString().isEmpty());
    QCOMPARE(profile.value(text("PayloadUUID")), source.value(text("PayloadUUID")));
}

void tst_PctSigning::aSignedProfileMayBeLargerThanAMebibyte()
{
    const ProfileRunner runner;
    runner.addIdentity(text("Pelix Deployment"));
    const QByteArray domains(3 * 1024 * 1024, 'd');
    const QString document = runner.document(
        "PelixPDFEditor", "<Profstore><Preferences><Preference Text='LoginDomainList' String='" + domains +
                              "'/></Preferences></Profstore>");
    const PctResult made =
        runner.makeProfile(true, {text("--config"), document, text("--sign"), text("Pelix Deployment")});
    QVERIFY2(made.exitCode == 0 && made.err.isEmpty(), made.err.left(1000).constData());
    const QJsonObject profile = runner.propertyList(runner.verifiedContent(runner.output()));
    QCOMPARE(preferenceOf(profile, text("LoginDomainList")).value(text("String")).toString().toUtf8(),
             domains);
    const QJsonObject shown = runner.run({text("show"), text("--json"), runner.output()}).json();
    QCOMPARE(shown.value(text("settings")).toObject().value(text("strLoginDomainList")).toString().toUtf8(),
             domains);
}

void tst_PctSigning::aCommandThatTruncatesItsOutputFirstSignsTheProfile()
{
    const ProfileRunner runner;
    runner.addIdentity(text("Pelix Deployment"));
    runner.replaceTool(text("security"), "[ \"$1 $2\" != 'cms -S' ] || : > \"${8}\"; exec \"$real\" \"$@\"");
    const PctResult made = runner.makeProfile(
        true, {text("--identifier"), text("a.b"), text("--sign"), text("Pelix Deployment")});
    QVERIFY2(made.exitCode == 0 && made.err.isEmpty(), made.err.constData());
    const QJsonObject profile = runner.propertyList(runner.verifiedContent(runner.output()));
    QCOMPARE(profile.value(text("PayloadIdentifier")).toString(), text("a.b"));
    QCOMPARE(runner.files(), QStringList{text("out.mobileconfig")});
}

void tst_PctSigning::anUnknownIdentityIsRefused()
{
    const ProfileRunner runner;
    runner.addIdentity(text("Pelix Deployment"));
    TestFiles::write(runner.output(), "as it was");
    const PctResult result =
        runner.makeProfile(true, {text("--force"), text("--sign"), text("Somebody Else")});
    QVERIFY2(result.isOneLineRefusal(), result.err.constData());
    QVERIFY2(result.err.contains("Somebody Else: there is no signing identity of this name"),
             result.err.constData());
    QCOMPARE(TestFiles::read(runner.output()), QByteArray("as it was"));
}

void tst_PctSigning::aSigningThatFailsChangesNothing_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<bool>("existing");
    const QByteArray otherwiseReal = "[ \"$1 $2\" = 'cms -S' ] || exec \"$real\" \"$@\"; ";
    const QByteArray halfWritten = otherwiseReal + "printf '\\060\\202' > \"${8}\"; ";
    for (const bool existing : {true, false}) {
        const char *output = existing ? "output exists" : "no output yet";
        QTest::addRow("refuses, %s", output) << otherwiseReal + "echo no >&2; exit 1" << existing;
        QTest::addRow("fails half-way, %s", output) << halfWritten + "exit 3" << existing;
        QTest::addRow("is killed half-way, %s", output) << halfWritten + "kill -9 $$" << existing;
        QTest::addRow("truncates and says nothing, %s", output) << halfWritten + "exit 0" << existing;
        QTest::addRow("removes the file, %s", output) << otherwiseReal + "rm \"${8}\"; exit 0" << existing;
    }
}

void tst_PctSigning::aSigningThatFailsChangesNothing()
{
    QFETCH(QByteArray, script);
    QFETCH(bool, existing);
    const ProfileRunner runner;
    runner.addIdentity(text("Pelix Deployment"));
    runner.replaceTool(text("security"), script);
    if (existing)
        TestFiles::write(runner.output(), "as it was");
    const QStringList before = runner.files();
    const PctResult result =
        runner.makeProfile(true, {text("--force"), text("--sign"), text("Pelix Deployment")});
    QVERIFY2(result.isOneLineRefusal(), result.err.constData());
    QVERIFY2(result.err.contains("signing with this identity failed"), result.err.constData());
    QCOMPARE(runner.files(), before);
    if (existing)
        QCOMPARE(TestFiles::read(runner.output()), QByteArray("as it was"));
}

void tst_PctSigning::anUnsignedResultOfASigningIsRefused()
{
    const ProfileRunner runner;
    runner.addIdentity(text("Pelix Deployment"));
    runner.replaceTool(text("security"), "[ \"$1\" = cms ] || exec \"$real\" \"$@\"; exit 0");
    const PctResult result = runner.makeProfile(true, {text("--sign"), text("Pelix Deployment")});
    QVERIFY2(result.isOneLineRefusal() && result.err.contains("signing with this identity failed"),
             result.err.constData());
    QCOMPARE(runner.files(), QStringList());
}

void tst_PctSigning::aSigningThatIsEndedLeavesNothing_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGTERM") << SIGTERM;
}

void tst_PctSigning::aSigningThatIsEndedLeavesNothing()
{
    QFETCH(int, signal);
    ProfileRunner runner;
    const QTemporaryDir folder;
    const QString hanging = folder.filePath(text("hanging"));
    runner.setEnvironment(text("HANGING"), hanging);
    runner.addIdentity(text("Pelix Deployment"));
    runner.replaceTool(text("security"), "printf x > \"${8}\"; touch \"$HANGING\"; exec sleep 300");
    TestFiles::write(runner.output(), "as it was");

    QProcess process;
    runner.start(process,
                 runner.profileArguments(true, {text("--force"), text("--sign"), text("Pelix Deployment")}));
    QVERIFY(QTest::qWaitFor([&hanging] { return QFile::exists(hanging); }, 60000));
    QCOMPARE(runner.files(), QStringList{text("out.mobileconfig")});
    QCOMPARE(runner.temporaryLeftovers().size(), 1); // the private folder, until the end
    ::kill(static_cast<pid_t>(process.processId()), signal);
    const PctResult result = PctRunner::waitFor(process);
    QCOMPARE(result.status, QProcess::CrashExit);
    QCOMPARE(result.exitCode, signal);
    QVERIFY2(result.err.endsWith(": interrupted; run it again\n"), result.err.constData());
    QCOMPARE(TestFiles::read(runner.output()), QByteArray("as it was"));
    QCOMPARE(runner.files(), QStringList{text("out.mobileconfig")});
    QCOMPARE(runner.temporaryLeftovers(), QStringList());
}

QTEST_GUILESS_MAIN(tst_PctSigning)
#include "tst_PctSigning.moc"
