// SPDX-License-Identifier: Apache-2.0
#include "core/HostPaths.h"
#include "profile/CProfileGenerator.h"
#include "tests/profile/LogLines.h"
#include "tests/profile/ProfileSamples.h"
#include "tests/profile/StandIns.h"

#include <QDir>
#include <QtTest>

namespace {

const QString security = QStringLiteral("security");
const QString signer = QStringLiteral("Pelix Test Signer");
const QFile::Permissions permissions =
    QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser | QFile::ReadGroup;

/// What OpenSSL takes out of a signed file, after it has checked the signature.
QByteArray contentByOpenSsl(const QString &message)
{
    return TestFiles::outputOf(QStringLiteral("openssl"),
                               {QStringLiteral("cms"), QStringLiteral("-verify"), QStringLiteral("-noverify"),
                                QStringLiteral("-inform"), QStringLiteral("DER"), QStringLiteral("-binary"),
                                QStringLiteral("-in"), message});
}

/// Empties its output before it reads its input, as Apple's does.
QByteArray truncatingSecurity()
{
    return "exec '" PCT_APPLE_LIKE_SECURITY "' \"$@\"\n";
}

} // namespace

/// SignProfile over commands that treat the profile in every way; real identities, real signatures.
class tst_ProfileSigning : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (QFileInfo::exists(QStringLiteral("/usr/bin/security")))
            QSKIP("this system has the command itself");
        qputenv("PCT_REAL_SECURITY",
                QFile::encodeName(HostPaths::command(QStringLiteral("/usr/bin/security"))));
        qputenv("APPLE_LIKE_REAL",
                QFile::encodeName(QFileInfo(qEnvironmentVariable("PCT_REAL_SECURITY")).absolutePath()));
        qputenv("PCT_SECURITY_CALLS", QFile::encodeName(m_calls));
        qputenv("PCT_IDENTITIES_DIR", QFile::encodeName(m_folder.filePath(QStringLiteral("identities"))));
        for (const auto *name : {"identities", "tmp", "out"})
            QVERIFY(QDir(m_folder.path()).mkdir(QString::fromLatin1(name)));
        TestFiles::outputOf(QStringLiteral(PCT_MAKE_IDENTITY),
                            {QStringLiteral("--name"), signer, QStringLiteral("--output"),
                             m_folder.filePath(QStringLiteral("identities/signer.pem"))});
    }

    void init()
    {
        QFile::remove(m_calls);
        m_commands.reset(new StandIns);
        m_before = qgetenv("TMPDIR");
        qputenv("TMPDIR", QFile::encodeName(m_folder.filePath(QStringLiteral("tmp"))));
        TestFiles::write(m_path, m_profile);
        QVERIFY(QFile::setPermissions(m_path, permissions));
    }

    void cleanup()
    {
        qputenv("TMPDIR", m_before);
        m_commands.reset();
    }

    void aCommandThatTruncatesItsOutputFirstSignsTheProfile()
    {
        m_commands->set(security, truncatingSecurity());
        const LogLines log;
        QVERIFY2(CProfileGenerator::SignProfile(m_path, signer), qPrintable(log.all()));
        QCOMPARE(contentByOpenSsl(m_path), m_profile);
        QCOMPARE(QFile::permissions(m_path), permissions);
        QVERIFY2(log.has(QStringLiteral("debug Profile signed successfully.")), qPrintable(log.all()));
        verifyNothingIsLeft();
    }

    void theFirstTwoCallsArePrescribedAndAThirdDecodes()
    {
        m_commands->set(security,
                        "echo \"$*\" >> \"$PCT_SECURITY_CALLS\"; exec \"$PCT_REAL_SECURITY\" \"$@\"\n");
        QVERIFY(CProfileGenerator::SignProfile(m_path, signer));
        QCOMPARE(calls(),
                 QStringList({QStringLiteral("cms -S -N %1 -i %2 -o %2").arg(signer, m_path),
                              QStringLiteral("cms -D -i ") + m_path, QStringLiteral("cms -D -i ") + m_path}));
        QCOMPARE(contentByOpenSsl(m_path), m_profile);
        verifyNothingIsLeft();
    }

    void anotherFileIsSignedOnlyAfterTheFirstTwoCalls()
    {
        m_commands->set(security, truncatingSecurity());
        QVERIFY(CProfileGenerator::SignProfile(m_path, signer));
        QCOMPARE(calls().mid(0, 2),
                 QStringList({QStringLiteral("cms -S -N %1 -i %2 -o %2").arg(signer, m_path),
                              QStringLiteral("cms -D -i ") + m_path}));
        QCOMPARE(calls().filter(QStringLiteral("cms -S")).size(), 2);
    }

    void aSigningThatFailsLeavesTheProfile_data()
    {
        QTest::addColumn<QByteArray>("script");
        const QByteArray onlySign = "[ \"$2\" = -S ] || exec \"$PCT_REAL_SECURITY\" \"$@\"\n";
        QTest::newRow("refused") << onlySign + "exit 1\n";
        QTest::newRow("truncated and refused") << onlySign + ": > \"$8\"; exit 1\n";
        QTest::newRow("removed and refused") << onlySign + "rm -f \"$8\"; exit 1\n";
        QTest::newRow("half written and killed") << onlySign + "printf 0 > \"$8\"; kill -9 $$\n";
        QTest::newRow("nothing done") << onlySign + "exit 0\n";
        QTest::newRow("always an empty message")
            << onlySign + ": > \"$0.empty\"; exec \"$PCT_REAL_SECURITY\" cms -S -N \"$4\" -i \"$0.empty\" -o "
                          "\"$8\"\n";
        QTest::newRow("always another content")
            << onlySign + "echo x > \"$0.other\"; exec \"$PCT_REAL_SECURITY\" cms -S -N \"$4\" -i "
                          "\"$0.other\" -o \"$8\"\n";
        QTest::newRow("a link in its place") << onlySign + "rm \"$8\"; ln -s /nowhere \"$8\"; exit 0\n";
        QTest::newRow("other permissions") << onlySign + "chmod 777 \"$8\"; exit 1\n";
        QTest::newRow("the input is gone, too") << onlySign + "rm -f \"$6\" \"$8\"; exit 0\n";
        QTest::newRow("says yes to everything") << QByteArray("exit 0\n");
    }

    void aSigningThatFailsLeavesTheProfile()
    {
        QFETCH(QByteArray, script);
        m_commands->set(security, script);
        const LogLines log;
        QVERIFY(!CProfileGenerator::SignProfile(m_path, signer));
        QVERIFY(!log.has(QStringLiteral("debug Profile signed")));
        QCOMPARE(TestFiles::read(m_path), m_profile);
        QVERIFY(!QFileInfo(m_path).isSymLink());
        QCOMPARE(QFile::permissions(m_path), permissions);
        verifyNothingIsLeft();
    }

    void aRefusalThatLeavesTheProfileIsNotTriedAgain()
    {
        m_commands->set(security, "echo \"$*\" >> \"$PCT_SECURITY_CALLS\"; exit 1\n");
        QVERIFY(!CProfileGenerator::SignProfile(m_path, signer));
        QCOMPARE(calls(), QStringList(QStringLiteral("cms -S -N %1 -i %2 -o %2").arg(signer, m_path)));
    }

    void whatCannotBeReadIsNotSigned()
    {
        QVERIFY(QFile::remove(m_path));
        m_commands->set(security, "echo \"$*\" >> \"$PCT_SECURITY_CALLS\"; : > \"$8\"\n");
        const LogLines log;
        QVERIFY(!CProfileGenerator::SignProfile(m_path, signer));
        QVERIFY2(log.has(QStringLiteral("warning Failed to sign profile: ")), qPrintable(log.all()));
        QVERIFY(!QFile::exists(m_path) && !QFile::exists(m_calls));
    }

private:
    QStringList calls() const
    {
        return QString::fromUtf8(TestFiles::read(m_calls)).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }

    void verifyNothingIsLeft() const
    {
        const auto everything = QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot;
        QCOMPARE(QDir(m_folder.filePath(QStringLiteral("tmp"))).entryList(everything), QStringList());
        QCOMPARE(QDir(m_folder.filePath(QStringLiteral("out"))).entryList(everything),
                 QStringList(QStringLiteral("a b.mobileconfig")));
    }

    QTemporaryDir m_folder;
    const QString m_calls = m_folder.filePath(QStringLiteral("calls"));
    const QString m_path = m_folder.filePath(QStringLiteral("out/a b.mobileconfig"));
    const QByteArray m_profile = ProfileSamples::profileFile(ProfileSamples::editorBundle);
    QScopedPointer<StandIns> m_commands;
    QByteArray m_before;
};

QTEST_GUILESS_MAIN(tst_ProfileSigning)
#include "tst_ProfileSigning.moc"
