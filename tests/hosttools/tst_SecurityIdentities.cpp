// SPDX-License-Identifier: Apache-2.0
#include "tests/hosttools/profiles/SigningTools.h"
#include "tests/hosttools/ToolRun.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

/// The list of signing identities, over files that openssl has made.
class tst_SecurityIdentities : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_folder.reset(new QTemporaryDir); }

    void listsAnIdentityAsTheCommandDoes();
    void readsEveryKindOfFile_data();
    void readsEveryKindOfFile();
    void listsInTheOrderOfFileNames();
    void keepsIdentitiesOfOneNameApart();
    void leavesOutWhatCannotSignCode_data();
    void leavesOutWhatCannotSignCode();
    void saysThatThereIsNone_data();
    void saysThatThereIsNone();
    void looksInTheUsersDataFolder();
    void opensALockedFileWithThePassword();
    void opensALockedKeyWithThePasswordOnly_data();
    void opensALockedKeyWithThePasswordOnly();
    void namesALockedFileWithoutThePassword();
    void namesAFileThatIsNoIdentity_data();
    void namesAFileThatIsNoIdentity();
    void warnsOfAKeyThatOthersCanRead_data();
    void warnsOfAKeyThatOthersCanRead();
    void keepsAHostileNameOnItsLine();
    void neverShowsOrCopiesAPrivateKey();
    void aToldKeyIsNoticed();
    void refusesWrongUsage_data();
    void refusesWrongUsage();

private:
    QString at(const char *name) const { return m_folder->path() + QLatin1Char('/') + QLatin1String(name); }
    void make(const char *name, const char *file, const char *options = "") const
    {
        SigningTools::makeIdentity(QString::fromUtf8(name), at(file),
                                   QString::fromLatin1(options).split(QLatin1Char(' '), Qt::SkipEmptyParts));
    }
    ToolRun::Result find(const QStringList &environment = {}) const
    {
        const QString folder = QStringLiteral("PCT_IDENTITIES_DIR=") + m_folder->path();
        return ToolRun::run(QStringLiteral("security"),
                            {QStringLiteral("find-identity"), QStringLiteral("-v"), QStringLiteral("-p"),
                             QStringLiteral("codesigning")},
                            QString(), QStringList(folder) + environment);
    }
    /// Found without any complaint, under this name alone.
    void requireFound(const ToolRun::Result &result, const QByteArray &name) const;

    QScopedPointer<QTemporaryDir> m_folder;
};

namespace {

const QByteArray noneFound = "     0 valid identities found\n";

QByteArray fingerprintByOpenSsl(const QString &path)
{
    const QByteArray line =
        TestFiles::outputOf(QStringLiteral("openssl"),
                            {QStringLiteral("x509"), QStringLiteral("-noout"), QStringLiteral("-fingerprint"),
                             QStringLiteral("-sha1"), QStringLiteral("-in"), path});
    return line.mid(line.indexOf('=') + 1).trimmed().replace(':', QByteArray());
}

/// What of an RSA key its certificate does not hold: all behind modulus and exponent.
QByteArray secretsOf(const QString &keyFile)
{
    const QString der = keyFile + QStringLiteral(".der");
    TestFiles::outputOf(QStringLiteral("openssl"),
                        {QStringLiteral("rsa"), QStringLiteral("-in"), keyFile,
                         QStringLiteral("-traditional"), QStringLiteral("-outform"), QStringLiteral("DER"),
                         QStringLiteral("-out"), der});
    const QByteArray bytes = TestFiles::read(der);
    QFile::remove(der);
    const QByteArray publicExponent("\x02\x03\x01\x00\x01", 5);
    return bytes.mid(bytes.indexOf(publicExponent) + publicExponent.size());
}

bool holdsPartOf(const QByteArray &text, const QByteArray &secret)
{
    constexpr int enough = 12;
    for (int place = 0; place + enough <= secret.size(); ++place) {
        if (text.contains(secret.mid(place, enough)))
            return true;
    }
    return false;
}

/// Whether a text holds a part of a secret, as bytes, in hexadecimal digits or in Base64, whatever stands
/// around.
bool tells(const QByteArray &text, const QByteArray &secret)
{
    QByteArray digits = text.toLower();
    digits.replace(":", "").replace("\n", "");
    QByteArray letters = text;
    letters.replace("\n", "");
    bool found = holdsPartOf(text, secret) || holdsPartOf(digits, secret.toHex());
    for (int shift = 0; shift < 3; ++shift)
        found = found || holdsPartOf(letters, secret.mid(shift).toBase64(QByteArray::OmitTrailingEquals));
    return found;
}

} // namespace

void tst_SecurityIdentities::requireFound(const ToolRun::Result &result, const QByteArray &name) const
{
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(result.output.count('\n'), 2);
    QVERIFY2(result.output.contains(QByteArray(" \"" + name + "\"\n     1 valid identities found\n")),
             result.output.constData());
}

void tst_SecurityIdentities::listsAnIdentityAsTheCommandDoes()
{
    make("Pelix Signer", "one.pem");
    const ToolRun::Result result = find();
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.output, "  1) " + fingerprintByOpenSsl(at("one.pem")) +
                                " \"Pelix Signer\"\n     1 valid identities found\n");
}

void tst_SecurityIdentities::readsEveryKindOfFile_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("options");
    QTest::newRow("certificate and key in one file") << QByteArray("a.pem") << QByteArray();
    QTest::newRow("certificate and key side by side") << QByteArray("a.crt") << QByteArray();
    QTest::newRow("elliptic curve") << QByteArray("a.pem") << QByteArray("--key ec");
    QTest::newRow("PKCS#12 without a password") << QByteArray("a.p12") << QByteArray();
    QTest::newRow("PKCS#12, other suffix") << QByteArray("a.pfx") << QByteArray("--key ec");
    QTest::newRow("PKCS#12 as keychains export it") << QByteArray("a.p12") << QByteArray("--old-cipher");
}

void tst_SecurityIdentities::readsEveryKindOfFile()
{
    QFETCH(QByteArray, file);
    QFETCH(QByteArray, options);
    make("Päll/Corp", file.constData(), options.constData());
    requireFound(find(), "Päll/Corp");
}

void tst_SecurityIdentities::listsInTheOrderOfFileNames()
{
    make("First", "c.pem", "--key ec");
    make("Second", "b.p12", "--key ec");
    make("Third", "a.crt", "--key ec");
    const QList<QByteArray> lines = find().output.split('\n');
    QCOMPARE(lines.size(), 5);
    QVERIFY(lines.at(0).startsWith("  1) ") && lines.at(0).endsWith("\"Third\""));
    QVERIFY(lines.at(1).startsWith("  2) ") && lines.at(1).endsWith("\"Second\""));
    QVERIFY(lines.at(2).startsWith("  3) ") && lines.at(2).endsWith("\"First\""));
    QCOMPARE(lines.at(3), QByteArray("     3 valid identities found"));
}

void tst_SecurityIdentities::keepsIdentitiesOfOneNameApart()
{
    make("Twin", "a.pem", "--key ec");
    make("Twin", "b.pem", "--key ec");
    const QByteArray output = find().output;
    QVERIFY(output.contains(fingerprintByOpenSsl(at("a.pem"))));
    QVERIFY(output.contains(fingerprintByOpenSsl(at("b.pem"))));
}

void tst_SecurityIdentities::leavesOutWhatCannotSignCode_data()
{
    QTest::addColumn<QByteArray>("options");
    QTest::newRow("expired") << QByteArray("--key ec --validity past");
    QTest::newRow("not valid yet") << QByteArray("--key ec --validity future");
    QTest::newRow("for mail") << QByteArray("--key ec --use mail");
    QTest::newRow("for nothing special") << QByteArray("--key ec --use none");
    QTest::newRow("a key that messages cannot use") << QByteArray("--key ed25519");
}

void tst_SecurityIdentities::leavesOutWhatCannotSignCode()
{
    QFETCH(QByteArray, options);
    make("Unfit", "a.pem", options.constData());
    const ToolRun::Result result = find();
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.output, noneFound);
    QCOMPARE(result.errors, QByteArray());
}

void tst_SecurityIdentities::saysThatThereIsNone_data()
{
    QTest::addColumn<bool>("folderExists");
    QTest::newRow("empty folder") << true;
    QTest::newRow("no folder") << false;
}

void tst_SecurityIdentities::saysThatThereIsNone()
{
    QFETCH(bool, folderExists);
    if (!folderExists)
        QVERIFY(QDir(m_folder->path()).removeRecursively());
    const ToolRun::Result result = find();
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.output, noneFound);
    QCOMPARE(result.errors, QByteArray());
}

void tst_SecurityIdentities::looksInTheUsersDataFolder()
{
    QVERIFY(QDir(m_folder->path()).mkpath(QStringLiteral("pct/identities")));
    make("At Home", "pct/identities/a.pem", "--key ec");
    requireFound(
        find({QStringLiteral("PCT_IDENTITIES_DIR="), QStringLiteral("XDG_DATA_HOME=") + m_folder->path()}),
        "At Home");
}

void tst_SecurityIdentities::opensALockedFileWithThePassword()
{
    make("Locked", "a.p12", "--password secret");
    requireFound(find({QStringLiteral("PCT_IDENTITIES_PASSWORD=secret")}), "Locked");
}

void tst_SecurityIdentities::namesALockedFileWithoutThePassword()
{
    make("Locked", "a.p12", "--password secret");
    for (const auto *password : {"", "wrong"}) {
        const ToolRun::Result result =
            find({QStringLiteral("PCT_IDENTITIES_PASSWORD=") + QLatin1String(password)});
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.output, noneFound);
        QVERIFY(ToolRun::hasOneMessage(result, QStringLiteral("security")));
        QVERIFY(result.errors.contains("a.p12"));
    }
}

void tst_SecurityIdentities::opensALockedKeyWithThePasswordOnly_data()
{
    QTest::addColumn<QString>("locking");
    QTest::addColumn<QByteArray>("mark");
    QTest::newRow("PKCS#8") << QStringLiteral("pkey -aes256") << QByteArray("BEGIN ENCRYPTED PRIVATE KEY");
    QTest::newRow("old form") << QStringLiteral("rsa -traditional -aes128")
                              << QByteArray("Proc-Type: 4,ENCRYPTED");
    QTest::newRow("old form, old cipher")
        << QStringLiteral("rsa -traditional -des3") << QByteArray("DEK-Info: DES-EDE3-CBC");
}

void tst_SecurityIdentities::opensALockedKeyWithThePasswordOnly()
{
    QFETCH(QString, locking);
    QFETCH(QByteArray, mark);
    make("Locked", "a.crt");
    QVERIFY(QFile::rename(at("a.key"), at("open.key")));
    const QStringList files{QStringLiteral("-in"), at("open.key"), QStringLiteral("-out"), at("a.key")};
    TestFiles::outputOf(QStringLiteral("openssl"),
                        locking.split(QLatin1Char(' ')) + files +
                            QStringList{QStringLiteral("-passout"), QStringLiteral("pass:secret")});
    QVERIFY(TestFiles::read(at("a.key")).contains(mark));
    for (const bool inOneFile : {false, true}) {
        if (inOneFile) {
            TestFiles::write(at("a.pem"), TestFiles::read(at("a.crt")) + TestFiles::read(at("a.key")));
            QVERIFY(QFile::setPermissions(at("a.pem"), QFile::ReadOwner) && QFile::remove(at("a.crt")));
        }
        for (const auto *password : {"", "wrong", "wronger", "and so on"}) {
            const ToolRun::Result result =
                find({QStringLiteral("PCT_IDENTITIES_PASSWORD=") + QLatin1String(password)});
            QCOMPARE(result.output, noneFound);
            QVERIFY(ToolRun::hasOneMessage(result, QStringLiteral("security")));
            QVERIFY2(result.errors.contains("is PCT_IDENTITIES_PASSWORD right?"), result.errors.constData());
        }
        requireFound(find({QStringLiteral("PCT_IDENTITIES_PASSWORD=secret")}), "Locked");
    }
}

void tst_SecurityIdentities::namesAFileThatIsNoIdentity_data()
{
    QTest::addColumn<QByteArray>("kind");
    for (const auto *kind : {"empty", "random", "certificate alone", "key alone", "another's key", "folder",
                             "pair without key", "far too large"})
        QTest::newRow(kind) << QByteArray(kind);
}

void tst_SecurityIdentities::namesAFileThatIsNoIdentity()
{
    QFETCH(QByteArray, kind);
    make("Pair", "pair.crt", "--key ec");
    make("Other", "other.crt", "--key ec");
    const QByteArray certificate = TestFiles::read(at("pair.crt"));
    const QByteArray key = TestFiles::read(at("pair.key"));
    const QMap<QByteArray, QByteArray> contents = {{"random", QByteArray("\x30\x82\x7f\xff\x00\x01", 6)},
                                                   {"certificate alone", certificate},
                                                   {"key alone", key},
                                                   {"another's key", TestFiles::read(at("other.crt")) + key},
                                                   {"far too large", QByteArray(2 << 20, 'x')}};
    if (kind == "folder")
        QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("broken.pem")));
    else if (kind == "pair without key")
        TestFiles::write(at("broken.crt"), certificate);
    else
        TestFiles::write(at("broken.pem"), contents.value(kind));
    const ToolRun::Result result = find();
    QCOMPARE(result.exitCode, 0);
    QVERIFY(result.output.endsWith("     2 valid identities found\n"));
    QVERIFY(result.errors.contains("broken."));
    QCOMPARE(result.errors.count('\n'), 1);
}

void tst_SecurityIdentities::warnsOfAKeyThatOthersCanRead_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("keyFile");
    QTest::newRow("one file") << QByteArray("a.pem") << QByteArray("a.pem");
    QTest::newRow("pair") << QByteArray("a.crt") << QByteArray("a.key");
    QTest::newRow("PKCS#12") << QByteArray("a.p12") << QByteArray("a.p12");
}

void tst_SecurityIdentities::warnsOfAKeyThatOthersCanRead()
{
    QFETCH(QByteArray, file);
    QFETCH(QByteArray, keyFile);
    make("Exposed", file.constData(), "--key ec");
    requireFound(find(), "Exposed");
    QVERIFY(QFile::setPermissions(at(keyFile.constData()),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther));
    const ToolRun::Result result = find();
    QVERIFY(result.output.contains("\"Exposed\""));
    QVERIFY(ToolRun::hasOneMessage(result, QStringLiteral("security")));
    QVERIFY(result.errors.contains(QByteArray('/' + keyFile + ':')));
}

void tst_SecurityIdentities::keepsAHostileNameOnItsLine()
{
    make("two\nlines\x1b[2J", "a.pem", "--key ec");
    requireFound(find(), "two\\u000alines\\u001b[2J");
}

void tst_SecurityIdentities::neverShowsOrCopiesAPrivateKey()
{
    make("Quiet", "a.crt");
    const QByteArray key = secretsOf(at("a.key"));
    QVERIFY(key.size() > 500);
    QTemporaryDir elsewhere;
    const QString file = elsewhere.path() + QStringLiteral("/file");
    TestFiles::write(file, "content");
    const QByteArray before = ToolRun::contentsOf(m_folder->path());
    const ToolRun::Result found = find();
    const ToolRun::Result done =
        ToolRun::run(QStringLiteral("security"),
                     {QStringLiteral("cms"), QStringLiteral("-S"), QStringLiteral("-N"),
                      QStringLiteral("Quiet"), QStringLiteral("-i"), file, QStringLiteral("-o"), file},
                     elsewhere.path(), {QStringLiteral("PCT_IDENTITIES_DIR=") + m_folder->path()});
    QCOMPARE(done.exitCode, 0);
    for (const QByteArray &text :
         {found.output, found.errors, done.output, done.errors, TestFiles::read(file)})
        QVERIFY(!tells(text, key));
    QCOMPARE(ToolRun::namesIn(elsewhere.path()), QStringList(QStringLiteral("file")));
    QCOMPARE(ToolRun::contentsOf(m_folder->path()), before);
}

/// A key is noticed in whatever form it is told.
void tst_SecurityIdentities::aToldKeyIsNoticed()
{
    make("Loud", "a.crt");
    const QByteArray key = secretsOf(at("a.key"));
    const QByteArray part = key.mid(key.size() / 2, 64);
    for (const QByteArray &told :
         {TestFiles::read(at("a.key")), part, part.toHex(), part.toHex(':').toUpper(), part.toBase64(),
          QByteArray("x" + part).toBase64(), QByteArray("xy" + part).toBase64()})
        QVERIFY2(tells("before " + told + " behind", key), told.constData());
    QVERIFY(!tells(TestFiles::read(at("a.crt")), key));
}

void tst_SecurityIdentities::refusesWrongUsage_data()
{
    QTest::addColumn<QString>("arguments");
    for (const auto *arguments :
         {"", "find-identity", "find-identity -v", "find-identity -v -p", "find-identity -v -p ssl-client",
          "find-identity -v -v -p codesigning", "find-identity -v -p codesigning extra", "dump-keychain"})
        QTest::newRow(arguments) << QString::fromLatin1(arguments);
}

void tst_SecurityIdentities::refusesWrongUsage()
{
    QFETCH(QString, arguments);
    const ToolRun::Result result =
        ToolRun::run(QStringLiteral("security"), arguments.split(QLatin1Char(' '), Qt::SkipEmptyParts));
    QCOMPARE(result.exitCode, 2);
    QVERIFY(result.errors.startsWith("usage: security "));
    QCOMPARE(result.output, QByteArray());
}

QTEST_GUILESS_MAIN(tst_SecurityIdentities)
#include "tst_SecurityIdentities.moc"
