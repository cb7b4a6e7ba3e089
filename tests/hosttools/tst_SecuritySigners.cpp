// SPDX-License-Identifier: Apache-2.0
#include "tests/hosttools/profiles/SigningTools.h"
#include "tests/hosttools/ToolRun.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

/// What the stand-in for `security cms -D -h` says of those who signed.
class tst_SecuritySigners : public QObject
{
    Q_OBJECT

private slots:
    void writesANameAsItIs();
    void tellsExpiredAndUnknownSignersFromOthers_data();
    void tellsExpiredAndUnknownSignersFromOthers();
};

namespace {

/// The headers of a message that an identity, which lies in the folder of the user's or beside it, has
/// signed.
QByteArray headersOf(const QString &name, bool isTheUsers, const QStringList &options)
{
    const QTemporaryDir folder;
    const auto at = [&folder](const char *file) { return folder.filePath(QString::fromLatin1(file)); };
    QDir(folder.path()).mkdir(QStringLiteral("identities"));
    const QString signer = at(isTheUsers ? "identities/one.pem" : "one.pem");
    SigningTools::makeIdentity(name, signer,
                               QStringList{QStringLiteral("--key"), QStringLiteral("ec")} + options);
    TestFiles::write(at("content"), "content");
    SigningTools::signWithOpenSsl(at("content"), signer, at("message"));
    const ToolRun::Result result =
        ToolRun::run(QStringLiteral("security"),
                     {QStringLiteral("cms"), QStringLiteral("-D"), QStringLiteral("-i"), at("message"),
                      QStringLiteral("-n"), QStringLiteral("-h"), QStringLiteral("0")},
                     folder.path(), {QStringLiteral("PCT_IDENTITIES_DIR=") + at("identities")});
    return result.exitCode == 0 ? result.output : result.errors;
}

} // namespace

void tst_SecuritySigners::writesANameAsItIs()
{
    const QString name = QStringLiteral("x\"; \\\nsigner1.id=\"Boss");
    QCOMPARE(headersOf(name, false, {}),
             "SMIME: \tlevel=0.1; type=signedData; nsigners=1; \n\t\tsigner0.id=\"" + name.toUtf8() +
                 "\"; signer0.status=SigningCertNotTrusted; \n");
}

void tst_SecuritySigners::tellsExpiredAndUnknownSignersFromOthers_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<bool>("isTheUsers");
    QTest::addColumn<QByteArray>("status");
    QTest::newRow("one of the user's") << QStringList() << true << QByteArray("GoodSignature");
    QTest::newRow("unknown") << QStringList() << false << QByteArray("SigningCertNotTrusted");
    for (const auto *validity : {"past", "future"})
        QTest::newRow(validity) << QStringList{QStringLiteral("--validity"), QString::fromLatin1(validity)}
                                << true << QByteArray("SigningCertNotTrusted");
}

void tst_SecuritySigners::tellsExpiredAndUnknownSignersFromOthers()
{
    QFETCH(QStringList, options);
    QFETCH(bool, isTheUsers);
    QFETCH(QByteArray, status);
    const QByteArray headers = headersOf(QStringLiteral("One"), isTheUsers, options);
    const QByteArray expected = "signer0.id=\"One\"; signer0.status=" + status + "; \n";
    QVERIFY2(headers.endsWith(expected), headers.constData());
}

QTEST_GUILESS_MAIN(tst_SecuritySigners)
#include "tst_SecuritySigners.moc"
