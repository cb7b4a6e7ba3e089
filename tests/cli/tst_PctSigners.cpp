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

/// A certificate with its key outside the folder of the user's identities, where nobody knows it.
QString identityOf(const ProfileRunner &runner, const QString &name, const QStringList &options = {})
{
    const QString file = runner.file(QStringLiteral("signer-%1.pem").arg(runner.files().size()));
    TestFiles::outputOf(text(PCT_MAKE_IDENTITY),
                        QStringList{text("--name"), name, text("--key"), text("ec"), text("--output"), file} +
                            options);
    return file;
}

void makeKnown(const ProfileRunner &runner, const QString &identity)
{
    TestFiles::write(runner.identityFile(QFileInfo(identity).baseName()), TestFiles::read(identity));
}

/// A profile signed by each of the identities, as OpenSSL signs.
QString signedBy(const ProfileRunner &runner, const QStringList &identities)
{
    using namespace ProfileXml;
    const QString plain = runner.file(text("plain"));
    const QString path = runner.file(text("signed.mobileconfig"));
    TestFiles::write(plain, profile(payload("")));
    QStringList arguments{text("cms"),      text("-sign"), text("-nodetach"), text("-binary"),
                          text("-outform"), text("DER"),   text("-in"),       plain,
                          text("-out"),     path};
    for (const QString &identity : identities)
        arguments += QStringList{text("-signer"), identity};
    TestFiles::outputOf(text("openssl"), arguments);
    return path;
}

QJsonObject shown(const ProfileRunner &runner, const QString &path)
{
    return runner.run({text("show"), text("--json"), path}).json();
}

} // namespace

/// What `pct` says of those who signed a profile.
class tst_PctSigners : public QObject
{
    Q_OBJECT

private slots:
    void whoseCertificateIsNotGoodIsSaid_data();
    void whoseCertificateIsNotGoodIsSaid();
    void aKnownSignerOfASourceIsNoWarning();
    void everySignerIsNamed();
    void aNameStandsAsTheCertificateHasIt_data();
    void aNameStandsAsTheCertificateHasIt();
    void anIdentifierThatIsCutEndsWithAnEllipsis();
};

void tst_PctSigners::whoseCertificateIsNotGoodIsSaid_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<bool>("known");
    QTest::newRow("expired") << QStringList{text("--validity"), text("past")} << true;
    QTest::newRow("not valid yet") << QStringList{text("--validity"), text("future")} << true;
    QTest::newRow("unknown") << QStringList() << false;
    QTest::newRow("expired and unknown") << QStringList{text("--validity"), text("past")} << false;
}

void tst_PctSigners::whoseCertificateIsNotGoodIsSaid()
{
    QFETCH(QStringList, options);
    QFETCH(bool, known);
    const ProfileRunner runner;
    const QString identity = identityOf(runner, text("Old Vendor"), options);
    if (known)
        makeKnown(runner, identity);
    const QString path = signedBy(runner, {identity});
    const QString said =
        text("is signed by \"Old Vendor\", whose certificate has expired or is unknown to this "
             "system");
    QCOMPARE(runner.run({text("show"), path}).messages(),
             QStringList(text("pct: %1: %2; whether that is to be trusted was not checked").arg(path, said)));
    const QJsonObject signer = shown(runner, path).value(text("signers")).toArray().first().toObject();
    QCOMPARE(signer.value(text("known")), QJsonValue(false));
    QCOMPARE(signer.value(text("status")), QJsonValue(text("SigningCertNotTrusted")));

    const PctResult made = runner.makeProfile(true, {text("--from"), path});
    QCOMPARE(made.exitCode, 0);
    QCOMPARE(made.messages(), QStringList(text("pct: %1: warning: %2").arg(path, said)));
    const PctResult reported =
        runner.makeProfile(true, {text("--force"), text("--json"), text("--from"), path});
    const QJsonObject warning = reported.json().value(text("warnings")).toArray().first().toObject();
    QCOMPARE(warning.value(text("code")), QJsonValue(text("signer-unknown")));
    QCOMPARE(warning.value(text("text")), QJsonValue(said));
}

void tst_PctSigners::aKnownSignerOfASourceIsNoWarning()
{
    const ProfileRunner runner;
    const QString identity = identityOf(runner, text("Our Vendor"));
    makeKnown(runner, identity);
    const QString path = signedBy(runner, {identity});
    const PctResult made = runner.makeProfile(true, {text("--from"), path});
    QVERIFY2(made.exitCode == 0 && made.err.isEmpty(), made.err.constData());
    QCOMPARE(runner.run({text("show"), path}).messages(),
             QStringList(text("pct: %1: is signed by \"Our Vendor\"; whether that is to be trusted was not "
                              "checked")
                             .arg(path)));
}

void tst_PctSigners::everySignerIsNamed()
{
    const ProfileRunner runner;
    const QString first = identityOf(runner, text("First"));
    makeKnown(runner, first);
    const QString second = identityOf(runner, text("Second"));
    const QString path = signedBy(runner, {first, second});
    QStringList names;
    for (const QJsonValue &signer : shown(runner, path).value(text("signers")).toArray())
        names << signer.toObject().value(text("name")).toString();
    names.sort(); // a set in the message has the order of its encoding
    QCOMPARE(names, QStringList({text("First"), text("Second")}));
    const PctResult made = runner.makeProfile(true, {text("--from"), path});
    QVERIFY2(made.err.contains("\"First\"") &&
                 made.err.contains("\"Second\", whose certificate has expired or is unknown"),
             made.err.constData());
}

void tst_PctSigners::aNameStandsAsTheCertificateHasIt_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("printed");
    QTest::newRow("quotes") << text("J \"x\" Doe") << text("\"J \"x\" Doe\"");
    QTest::newRow("backslash") << text("a\\nb") << text("\"a\\\\nb\"");
    QTest::newRow("line break") << text("a\nb") << text("\"a\\nb\"");
    QTest::newRow("not English") << text("Büro 日本") << text("\"Büro 日本\"");
    QTest::newRow("another signer's line")
        << text("x\"; signer0.status=GoodSignature; \n\t\tsigner1.id=\"Boss")
        << text("\"x\"; signer0.status=GoodSignature; \\n\\t\\tsigner1.id=\"Boss\"");
}

void tst_PctSigners::aNameStandsAsTheCertificateHasIt()
{
    QFETCH(QString, name);
    QFETCH(QString, printed);
    const ProfileRunner runner;
    const QString path = signedBy(runner, {identityOf(runner, name)});
    const QJsonObject object = shown(runner, path);
    QCOMPARE(object.value(text("signer")), QJsonValue(name));
    QCOMPARE(object.value(text("signers")).toArray().size(), 1);
    const QString message = runner.run({text("show"), path}).messages().value(0);
    QVERIFY2(message.contains(text(": is signed by %1, whose certificate").arg(printed)),
             qPrintable(message));
}

void tst_PctSigners::anIdentifierThatIsCutEndsWithAnEllipsis()
{
    using namespace ProfileXml;
    const ProfileRunner runner;
    const QString path = runner.file(text("other.mobileconfig"));
    TestFiles::write(path, profile(payload("", QByteArray(100, 'x'))));
    QVERIFY(runner.run({text("show"), path}).err.contains(QByteArray("(\"" + QByteArray(100, 'x') + "\")")));
    TestFiles::write(path, profile(payload("", QByteArray(101, 'x'))));
    QVERIFY(runner.run({text("show"), path}).err.contains(QByteArray("(\"" + QByteArray(100, 'x') + "…\")")));
}

QTEST_GUILESS_MAIN(tst_PctSigners)
#include "tst_PctSigners.moc"
