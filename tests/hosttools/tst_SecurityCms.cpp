// SPDX-License-Identifier: Apache-2.0
#include "tests/hosttools/profiles/SigningTools.h"
#include "tests/hosttools/ToolRun.h"
#include "tests/support/TestFiles.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

/// Signing and decoding, each checked against openssl's own program.
class tst_SecurityCms : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void signsForOtherPrograms_data();
    void signsForOtherPrograms();
    void signsAFileInPlaceAndKeepsItsModeAndOwner();
    void takesTheFitIdentityOfTwoNamesakes();
    void sendsTheCertificatesBesideItAlong();
    void aFailedSigningLeavesEverythingAsItWas_data();
    void aFailedSigningLeavesEverythingAsItWas();
    void decodesWhatOthersSigned_data();
    void decodesWhatOthersSigned();
    void decodesWhatItSigned();
    void decodesIntoAFile();
    void saysWhoSigned();
    void refusesWhatIsNoGoodMessage_data();
    void refusesWhatIsNoGoodMessage();
    void refusesAMessageThatIsCutAnywhere();
    void refusesWrongUsage_data();
    void refusesWrongUsage();

private:
    QString at(const QString &name) const { return m_folder->path() + QLatin1Char('/') + name; }
    QString identity(const char *file) const
    {
        return m_identities.path() + QLatin1Char('/') + QLatin1String(file);
    }
    ToolRun::Result security(const QStringList &arguments) const;
    ToolRun::Result sign(const QString &name, const QString &input, const QString &output) const;
    ToolRun::Result decode(const QString &input, const QStringList &more = {}) const;
    QByteArray signedByOthers(const QStringList &options = {}) const;
    QByteArray hostileMessage(const QByteArray &kind) const;

    QTemporaryDir m_identities;
    QScopedPointer<QTemporaryDir> m_folder;
    QString m_file; ///< holds `content`
};

namespace {

/// With line ends and bytes that a program for mail would change.
const char contentBytes[] = "<?xml version=\"1.0\"?>\r\n<plist/>\n\x00\xff\n.\n";
const QByteArray content(contentBytes, sizeof contentBytes - 1);

QString openSsl()
{
    return QStringLiteral("openssl");
}

QByteArray withByteChanged(QByteArray bytes, int position)
{
    bytes[position] = static_cast<char>(bytes.at(position) ^ 1);
    return bytes;
}

} // namespace

void tst_SecurityCms::initTestCase()
{
    const auto make = [this](const char *name, const char *file, const char *options) {
        SigningTools::makeIdentity(QString::fromUtf8(name), identity(file),
                                   QString::fromLatin1(options).split(QLatin1Char(' '), Qt::SkipEmptyParts));
    };
    make("RSA Signer", "rsa.pem", "");
    make("EC Signer", "ec.pem", "--key ec");
    make("Exported Signer", "exported.p12", "--old-cipher");
    make("Expired Signer", "expired.pem", "--validity past");
    make("Mail Signer", "mail.pem", "--use mail");
    make("Twin", "a-twin.pem", "--key ec --validity past");
    make("Twin", "b-twin.pem", "--key ec");
}

void tst_SecurityCms::init()
{
    m_folder.reset(new QTemporaryDir);
    m_file = at(QStringLiteral("file.mobileconfig"));
    TestFiles::write(m_file, content);
}

ToolRun::Result tst_SecurityCms::security(const QStringList &arguments) const
{
    return ToolRun::run(QStringLiteral("security"), QStringList(QStringLiteral("cms")) + arguments,
                        m_folder->path(), {QStringLiteral("PCT_IDENTITIES_DIR=") + m_identities.path()});
}

ToolRun::Result tst_SecurityCms::sign(const QString &name, const QString &input, const QString &output) const
{
    return security({QStringLiteral("-S"), QStringLiteral("-N"), name, QStringLiteral("-i"), input,
                     QStringLiteral("-o"), output});
}

ToolRun::Result tst_SecurityCms::decode(const QString &input, const QStringList &more) const
{
    return security(QStringList({QStringLiteral("-D"), QStringLiteral("-i"), input}) + more);
}

QByteArray tst_SecurityCms::signedByOthers(const QStringList &options) const
{
    const QString output = at(QStringLiteral("by-others"));
    SigningTools::signWithOpenSsl(m_file, identity("rsa.pem"), output, options);
    return TestFiles::read(output);
}

void tst_SecurityCms::signsForOtherPrograms_data()
{
    QTest::addColumn<QString>("name");
    for (const auto *name : {"RSA Signer", "EC Signer", "Exported Signer"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void tst_SecurityCms::signsForOtherPrograms()
{
    QFETCH(QString, name);
    const QString output = at(QStringLiteral("signed"));
    const ToolRun::Result result = sign(name, m_file, output);
    QVERIFY2(result.exitCode == 0, result.errors.constData());
    QCOMPARE(result.output + result.errors, QByteArray());
    QCOMPARE(SigningTools::contentByOpenSsl(output), content);
    QCOMPARE(TestFiles::read(m_file), content);
    const QByteArray printed = TestFiles::outputOf(
        openSsl(), {QStringLiteral("cms"), QStringLiteral("-cmsout"), QStringLiteral("-print"),
                    QStringLiteral("-inform"), QStringLiteral("DER"), QStringLiteral("-in"), output});
    QVERIFY(printed.contains("signingTime"));
    QVERIFY(printed.contains("sha256"));
    // A definite length: DER, not BER.
    QCOMPARE(TestFiles::read(output).left(2), QByteArray("\x30\x82"));
}

void tst_SecurityCms::signsAFileInPlaceAndKeepsItsModeAndOwner()
{
    const QByteArray path = m_file.toUtf8();
    QCOMPARE(chmod(path.constData(), 0640), 0);
    if (geteuid() == 0)
        QCOMPARE(chown(path.constData(), 501, 20), 0);
    struct stat before = {};
    QCOMPARE(stat(path.constData(), &before), 0);
    QCOMPARE(sign(QStringLiteral("RSA Signer"), m_file, m_file).exitCode, 0);
    QCOMPARE(SigningTools::contentByOpenSsl(m_file), content);
    struct stat after = {};
    QCOMPARE(stat(path.constData(), &after), 0);
    QCOMPARE(after.st_mode, before.st_mode);
    QCOMPARE(after.st_uid, before.st_uid);
    QCOMPARE(after.st_gid, before.st_gid);
    QCOMPARE(ToolRun::namesIn(m_folder->path()), QStringList(QStringLiteral("file.mobileconfig")));
}

void tst_SecurityCms::takesTheFitIdentityOfTwoNamesakes()
{
    QCOMPARE(sign(QStringLiteral("Twin"), m_file, m_file).exitCode, 0);
    QCOMPARE(SigningTools::contentByOpenSsl(m_file), content);
}

void tst_SecurityCms::sendsTheCertificatesBesideItAlong()
{
    const QByteArray other = TestFiles::read(identity("ec.pem"));
    const QByteArray ofIssuer = other.left(other.indexOf("-----BEGIN PRIVATE"));
    const QString chained = m_identities.path() + QStringLiteral("/chained.pem");
    SigningTools::makeIdentity(QStringLiteral("Chained"), chained);
    TestFiles::write(chained, ofIssuer + TestFiles::read(chained));
    QCOMPARE(sign(QStringLiteral("Chained"), m_file, m_file).exitCode, 0);
    const QByteArray certificates = TestFiles::outputOf(
        openSsl(), {QStringLiteral("cms"), QStringLiteral("-verify"), QStringLiteral("-noverify"),
                    QStringLiteral("-inform"), QStringLiteral("DER"), QStringLiteral("-in"), m_file,
                    QStringLiteral("-out"), QStringLiteral("/dev/null"), QStringLiteral("-certsout"),
                    QStringLiteral("/dev/stdout")});
    QCOMPARE(certificates.count("BEGIN CERTIFICATE"), 2);
}

void tst_SecurityCms::aFailedSigningLeavesEverythingAsItWas_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("output");
    const QString file = QStringLiteral("file.mobileconfig");
    const QString fit = QStringLiteral("RSA Signer");
    QTest::newRow("unknown identity") << QStringLiteral("Nobody") << file << file;
    QTest::newRow("part of a name") << QStringLiteral("RSA") << file << file;
    QTest::newRow("empty name") << QString() << file << file;
    QTest::newRow("expired identity") << QStringLiteral("Expired Signer") << file << file;
    QTest::newRow("identity for mail") << QStringLiteral("Mail Signer") << file << file;
    QTest::newRow("input that is missing") << fit << QStringLiteral("missing") << file;
    QTest::newRow("input that is a folder") << fit << QStringLiteral("folder") << file;
    QTest::newRow("input of 40 MB") << fit << QStringLiteral("large") << QStringLiteral("large");
    QTest::newRow("output that is a link") << fit << file << QStringLiteral("link");
    QTest::newRow("output that is a folder") << fit << file << QStringLiteral("folder");
    QTest::newRow("output in a folder that is missing") << fit << file << QStringLiteral("missing/file");
}

void tst_SecurityCms::aFailedSigningLeavesEverythingAsItWas()
{
    QFETCH(QString, name);
    QFETCH(QString, input);
    QFETCH(QString, output);
    QVERIFY(QFile::link(m_file, at(QStringLiteral("link"))));
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("folder")));
    QFile large(at(QStringLiteral("large")));
    QVERIFY(large.open(QIODevice::WriteOnly) && large.resize(40 << 20));
    const QByteArray before = ToolRun::contentsOf(m_folder->path());
    const ToolRun::Result result = sign(name, at(input), at(output));
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(ToolRun::hasOneMessage(result, QStringLiteral("security")), result.errors.constData());
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(ToolRun::contentsOf(m_folder->path()), before);
}

void tst_SecurityCms::decodesWhatOthersSigned_data()
{
    QTest::addColumn<QByteArray>("identityFile");
    QTest::addColumn<QString>("options");
    QTest::addColumn<bool>("indefinite");
    const auto row = [](const char *tag, const char *file, const char *options, bool indefinite) {
        QTest::newRow(tag) << QByteArray(file) << QString::fromLatin1(options) << indefinite;
    };
    row("DER, SHA-256", "rsa.pem", "-md sha256", false);
    row("DER, SHA-1", "rsa.pem", "-md sha1", false);
    row("DER, ECDSA", "ec.pem", "-md sha256", false);
    row("BER, SHA-1", "rsa.pem", "-md sha1 -stream", true);
    row("BER, ECDSA", "ec.pem", "-md sha384 -stream", true);
    row("without signed attributes", "rsa.pem", "-noattr", false);
    row("signer by key identifier", "rsa.pem", "-keyid", false);
    row("RSA-PSS", "rsa.pem", "-keyopt rsa_padding_mode:pss", false);
    row("expired signer", "expired.pem", "", false);
    row("signer not made for code", "mail.pem", "", false);
}

void tst_SecurityCms::decodesWhatOthersSigned()
{
    QFETCH(QByteArray, identityFile);
    QFETCH(QString, options);
    QFETCH(bool, indefinite);
    const QString message = at(QStringLiteral("message"));
    SigningTools::signWithOpenSsl(m_file, identity(identityFile.constData()), message,
                                  options.split(QLatin1Char(' '), Qt::SkipEmptyParts));
    QCOMPARE(TestFiles::read(message).at(1) == '\x80', indefinite);
    const ToolRun::Result result = decode(message);
    QVERIFY2(result.exitCode == 0, result.errors.constData());
    QCOMPARE(result.output, content);
}

void tst_SecurityCms::decodesWhatItSigned()
{
    QCOMPARE(sign(QStringLiteral("EC Signer"), m_file, m_file).exitCode, 0);
    QCOMPARE(decode(m_file).output, content);
}

void tst_SecurityCms::decodesIntoAFile()
{
    TestFiles::write(m_file, signedByOthers());
    QVERIFY(QFile::remove(at(QStringLiteral("by-others"))));
    const ToolRun::Result result = decode(m_file, {QStringLiteral("-o"), m_file});
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(TestFiles::read(m_file), content);
    QCOMPARE(ToolRun::namesIn(m_folder->path()), QStringList(QStringLiteral("file.mobileconfig")));
}

void tst_SecurityCms::saysWhoSigned()
{
    TestFiles::write(at(QStringLiteral("two")),
                     signedByOthers({QStringLiteral("-signer"), identity("ec.pem")}));
    const QStringList withHeaders = {QStringLiteral("-h"), QStringLiteral("0")};
    const ToolRun::Result both = decode(at(QStringLiteral("two")), withHeaders);
    QCOMPARE(both.exitCode, 0);
    QVERIFY(both.output.startsWith("SMIME: "));
    QVERIFY(both.output.contains("nsigners=2; "));
    QVERIFY(both.output.contains(".id=\"RSA Signer\"; "));
    QVERIFY(both.output.contains(".id=\"EC Signer\"; "));
    QVERIFY(both.output.endsWith(content));
    const ToolRun::Result headers =
        decode(at(QStringLiteral("two")), withHeaders + QStringList(QStringLiteral("-n")));
    QCOMPARE(headers.output + content, both.output);
}

QByteArray tst_SecurityCms::hostileMessage(const QByteArray &kind) const
{
    const QByteArray message = signedByOthers();
    const QString pem = identity("rsa.pem");
    const auto made = [](const QStringList &arguments) { return TestFiles::outputOf(openSsl(), arguments); };
    if (kind == "content changed")
        return withByteChanged(message, message.indexOf("plist"));
    if (kind == "signature changed")
        return withByteChanged(message, message.size() - 1);
    if (kind == "signature apart")
        return made({QStringLiteral("cms"), QStringLiteral("-sign"), QStringLiteral("-binary"),
                     QStringLiteral("-outform"), QStringLiteral("DER"), QStringLiteral("-signer"), pem,
                     QStringLiteral("-in"), m_file});
    if (kind == "signer's certificate missing")
        return signedByOthers({QStringLiteral("-nocerts")});
    if (kind == "certificates alone")
        return made({QStringLiteral("crl2pkcs7"), QStringLiteral("-nocrl"), QStringLiteral("-certfile"), pem,
                     QStringLiteral("-outform"), QStringLiteral("DER")});
    if (kind == "content that nobody signed")
        return QByteArray::fromHex("302906092a864886f70d010702a01c301a0201013100"
                                   "301106092a864886f70d010701a004040268693100");
    if (kind == "encrypted")
        return made({QStringLiteral("cms"), QStringLiteral("-encrypt"), QStringLiteral("-binary"),
                     QStringLiteral("-outform"), QStringLiteral("DER"), QStringLiteral("-in"), m_file, pem});
    if (kind == "not signed at all")
        return content;
    if (kind == "nested without end")
        return QByteArray("\x30\x80", 2).repeated(100000);
    if (kind == "length that lies")
        return QByteArray("\x30\x84\x7f\xff\xff\xff") + message.mid(4);
    if (kind == "40 MB")
        return message + QByteArray(40 << 20, '\0');
    return kind == "random" ? QByteArray::fromRawData("\x30\x82\x10\x00\x13\x37\xca\xfe\xba\xbe", 10)
                            : QByteArray();
}

void tst_SecurityCms::refusesWhatIsNoGoodMessage_data()
{
    QTest::addColumn<QByteArray>("kind");
    for (const auto *kind :
         {"content changed", "signature changed", "signature apart", "signer's certificate missing",
          "certificates alone", "content that nobody signed", "encrypted", "not signed at all",
          "nested without end", "length that lies", "40 MB", "random", "empty"})
        QTest::newRow(kind) << QByteArray(kind);
}

void tst_SecurityCms::refusesWhatIsNoGoodMessage()
{
    QFETCH(QByteArray, kind);
    const QString message = at(QStringLiteral("message"));
    const QString output = at(QStringLiteral("output"));
    TestFiles::write(message, hostileMessage(kind));
    TestFiles::write(output, "kept");
    for (const QStringList &more : {QStringList(), QStringList({QStringLiteral("-o"), output})}) {
        const ToolRun::Result result = decode(message, more);
        QCOMPARE(result.exitCode, 1);
        QCOMPARE(result.output, QByteArray());
        QVERIFY2(ToolRun::hasOneMessage(result, QStringLiteral("security")), result.errors.constData());
        QVERIFY(result.errors.contains("/message: "));
    }
    QCOMPARE(TestFiles::read(output), QByteArray("kept"));
}

void tst_SecurityCms::refusesAMessageThatIsCutAnywhere()
{
    const QByteArray whole = signedByOthers();
    const QString message = at(QStringLiteral("message"));
    constexpr int cuts = 40;
    for (int i = 0; i < cuts; ++i) {
        TestFiles::write(message, whole.left(whole.size() * i / cuts));
        const ToolRun::Result result = decode(message);
        QCOMPARE(result.exitCode, 1);
        QVERIFY(ToolRun::hasOneMessage(result, QStringLiteral("security")));
    }
}

void tst_SecurityCms::refusesWrongUsage_data()
{
    QTest::addColumn<QString>("arguments");
    for (const auto *arguments :
         {"", "-S", "-D", "-D -i", "-S -N x -i file", "-S -D -N x -i file -o file", "-D -N x -i file",
          "-D -i file -i file", "-S -i file -o file", "-E -i file", "-D -i file -x"})
        QTest::newRow(arguments) << QString::fromLatin1(arguments);
}

void tst_SecurityCms::refusesWrongUsage()
{
    QFETCH(QString, arguments);
    const ToolRun::Result result = security(arguments.split(QLatin1Char(' '), Qt::SkipEmptyParts));
    QCOMPARE(result.exitCode, 2);
    QVERIFY(result.errors.startsWith("usage: security "));
}

QTEST_GUILESS_MAIN(tst_SecurityCms)
#include "tst_SecurityCms.moc"
