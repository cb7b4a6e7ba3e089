// SPDX-License-Identifier: Apache-2.0
#include "tests/packaging/CommandRun.h"
#include "tests/support/TestFiles.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

const QString identity = QStringLiteral("Developer ID Application: Example (AB12CD34EF)");
const QString keychain = QStringLiteral("/tmp/build.keychain-db");
const QString identifier = QStringLiteral("org.example.tool");

void set(QProcessEnvironment &environment, const char *name, const QString &value)
{
    environment.insert(QLatin1String(name), value);
}

} // namespace

/// The scripts that sign the bundle and have the disk image notarized, with the Mac's commands played.
class tst_SigningScripts : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void signingGoesFromTheInsideToTheOutside();
    void aDryRunSaysTheSameAndRunsNothing();
    void afterSigningEverythingIsVerified();
    void withoutAnIdentityNothingIsSigned();
    void aFolderThatIsNoBundleIsRefused();
    void aFailingSignatureEndsTheSigning();
    void anImageIsSignedNotarizedStapledAndAssessed();
    void aDryRunOfTheNotarizationRunsNothing();
    void theProfileMayLieInAnotherKeychain();
    void whatAppleRefusesIsAFailureWithTheReason();
    void notarizingNeedsCredentials_data();
    void notarizingNeedsCredentials();
    void aMissingImageIsRefused();
    void theKeychainOfABuildServerServesCodesign();
    void aKeychainNeedsEverySecret();
    void wrongUsageIsTold();

private:
    void giveSecrets();
    QStringList calls() const;
    QString contents(const char *path) const
    {
        return m_bundle + QLatin1String("/Contents/") + QLatin1String(path);
    }
    CommandRun sign(const QStringList &arguments) const;
    CommandRun notarize(const QStringList &arguments) const;

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_bundle;
    QString m_image;
    QProcessEnvironment m_environment;
};

void tst_SigningScripts::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_bundle = m_folder->filePath(QStringLiteral("A Tool.app"));
    m_image = m_folder->filePath(QStringLiteral("A Tool.dmg"));
    m_environment = playedMac(m_folder->filePath(QStringLiteral("log")));
    set(m_environment, "PCT_SIGNING_IDENTITY", identity);
    set(m_environment, "PCT_NOTARY_PROFILE", QStringLiteral("release"));

    TestFiles::write(contents("Info.plist"),
                     "<plist version=\"1.0\">\n<dict>\n"
                     "    <key>CFBundleExecutable</key>\n    <string>A Tool</string>\n"
                     "    <key>CFBundleIdentifier</key>\n    <string>org.example.tool</string>\n"
                     "</dict>\n</plist>\n");
    for (const char *path :
         {"MacOS/A Tool", "MacOS/pct", "Frameworks/libpng16.dylib", "PlugIns/platforms/libqcocoa.dylib",
          "Frameworks/QtCore.framework/Versions/A/QtCore", "Frameworks/QtGui.framework/Versions/A/QtGui",
          "Frameworks/QtGui.framework/Versions/A/Libraries/libinner.dylib", "Resources/qt.conf"})
        TestFiles::write(contents(path), "x");
    for (const char *framework : {"QtCore", "QtGui"})
        QVERIFY(QFile::link(QStringLiteral("A"), contents("Frameworks/") + QLatin1String(framework) +
                                                     QStringLiteral(".framework/Versions/Current")));
    TestFiles::write(m_image, "image");
}

QStringList tst_SigningScripts::calls() const
{
    const QString log = m_folder->filePath(QStringLiteral("log"));
    if (!QFileInfo::exists(log))
        return {};
    return QString::fromUtf8(TestFiles::read(log)).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

void tst_SigningScripts::giveSecrets()
{
    set(m_environment, "PCT_CERTIFICATE_P12", QString::fromLatin1(QByteArray("the identity").toBase64()));
    set(m_environment, "PCT_CERTIFICATE_PASSWORD", QStringLiteral("secret of the file"));
    set(m_environment, "PCT_NOTARY_APPLE_ID", QStringLiteral("me@example.org"));
    set(m_environment, "PCT_NOTARY_TEAM_ID", QStringLiteral("AB12CD34EF"));
    set(m_environment, "PCT_NOTARY_PASSWORD", QStringLiteral("secret of the notary"));
}

CommandRun tst_SigningScripts::sign(const QStringList &arguments) const
{
    return runCommand(projectFile("packaging/macos/sign.sh"), arguments, m_environment);
}

CommandRun tst_SigningScripts::notarize(const QStringList &arguments) const
{
    return runCommand(projectFile("packaging/macos/notarize.sh"), arguments, m_environment);
}

void tst_SigningScripts::signingGoesFromTheInsideToTheOutside()
{
    const CommandRun run = sign({m_bundle});
    QVERIFY2(run.exitCode == 0, qPrintable(run.errors));
    const QString plain =
        QStringLiteral("codesign --force --sign %1 --options runtime --timestamp ").arg(identity);
    const QString program =
        plain + QStringLiteral("--entitlements %1 ").arg(projectFile("packaging/macos/entitlements.plist"));
    const QStringList expected = {
        plain + contents("Frameworks/QtGui.framework/Versions/A/Libraries/libinner.dylib"),
        plain + contents("PlugIns/platforms/libqcocoa.dylib"),
        plain + contents("Frameworks/libpng16.dylib"),
        plain + contents("Frameworks/QtCore.framework/Versions/A"),
        plain + contents("Frameworks/QtGui.framework/Versions/A"),
        program + QStringLiteral("--identifier %1.pct ").arg(identifier) + contents("MacOS/pct"),
        program + m_bundle,
    };
    QCOMPARE(calls().mid(0, expected.size()), expected);
    QVERIFY(calls().filter(QStringLiteral("--deep")).isEmpty());
}

void tst_SigningScripts::aDryRunSaysTheSameAndRunsNothing()
{
    const CommandRun dry = sign({QStringLiteral("--dry-run"), m_bundle});
    QCOMPARE(dry.exitCode, 0);
    QCOMPARE(calls(), QStringList());
    QCOMPARE(sign({m_bundle}).exitCode, 0);
    QString said = dry.output;
    said.replace(QStringLiteral("' '"), QStringLiteral(" ")).remove(QLatin1Char('\''));
    QStringList commands;
    for (const QString &line : said.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        commands << line.trimmed();
    QCOMPARE(commands, calls());
}

void tst_SigningScripts::afterSigningEverythingIsVerified()
{
    QCOMPARE(sign({m_bundle + QLatin1Char('/')}).exitCode, 0);
    const QStringList all = calls();
    const int half = all.size() / 2;
    for (int i = 0; i < half; ++i) {
        const QString path = all.at(i).mid(all.at(i).lastIndexOf(QStringLiteral(" /")) + 1);
        QCOMPARE(all.at(half + i), QStringLiteral("codesign --verify --strict --verbose=2 ") + path);
    }
    QCOMPARE(half, 7);
    QVERIFY(all.last().endsWith(QLatin1Char(' ') + m_bundle));
}

void tst_SigningScripts::withoutAnIdentityNothingIsSigned()
{
    m_environment.remove(QStringLiteral("PCT_SIGNING_IDENTITY"));
    for (const QStringList &arguments :
         {QStringList{m_bundle}, QStringList{QStringLiteral("--dry-run"), m_bundle}}) {
        const CommandRun run = sign(arguments);
        QCOMPARE(run.exitCode, 1);
        QCOMPARE(run.output, QString());
        QVERIFY(run.errors.startsWith(QStringLiteral("sign.sh: set PCT_SIGNING_IDENTITY")));
    }
    QCOMPARE(calls(), QStringList());
}

void tst_SigningScripts::aFolderThatIsNoBundleIsRefused()
{
    const CommandRun run = sign({m_folder->path()});
    QCOMPARE(run.exitCode, 1);
    QVERIFY(run.errors.contains(QStringLiteral("is no application bundle")));
    QCOMPARE(calls(), QStringList());
}

void tst_SigningScripts::aFailingSignatureEndsTheSigning()
{
    const QString commands = m_folder->filePath(QStringLiteral("commands"));
    TestFiles::writeScript(
        commands + QStringLiteral("/codesign"),
        "echo \"codesign $*\" >>\"$PCT_TEST_LOG\"\ncase \"$*\" in *libqcocoa*) exit 1 ;; esac\n");
    set(m_environment, "PATH", commands + QLatin1Char(':') + m_environment.value(QStringLiteral("PATH")));
    QCOMPARE(sign({m_bundle}).exitCode, 1);
    QCOMPARE(calls().size(), 2);
    QVERIFY(calls().last().contains(QStringLiteral("libqcocoa")));
}

void tst_SigningScripts::anImageIsSignedNotarizedStapledAndAssessed()
{
    const CommandRun run = notarize({m_image});
    QVERIFY2(run.exitCode == 0, qPrintable(run.errors));
    const QStringList expected = {
        QStringLiteral("codesign --force --sign %1 --timestamp %2").arg(identity, m_image),
        QStringLiteral("codesign --verify --strict --verbose=2 %1").arg(m_image),
        QStringLiteral("xcrun notarytool submit %1 --wait --keychain-profile release").arg(m_image),
        QStringLiteral("xcrun stapler staple %1").arg(m_image),
        QStringLiteral("xcrun stapler validate %1").arg(m_image),
        QStringLiteral("spctl --assess --type open --context context:primary-signature --verbose %1")
            .arg(m_image),
    };
    QCOMPARE(calls(), expected);
}

void tst_SigningScripts::aDryRunOfTheNotarizationRunsNothing()
{
    const CommandRun run = notarize({QStringLiteral("--dry-run"), m_image});
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(calls(), QStringList());
    QCOMPARE(run.output.count(QLatin1Char('\n')), 6);
    QVERIFY(run.output.contains(QStringLiteral("'xcrun' 'notarytool' 'submit' '%1' '--wait'").arg(m_image)));
}

void tst_SigningScripts::theProfileMayLieInAnotherKeychain()
{
    set(m_environment, "PCT_NOTARY_KEYCHAIN", QStringLiteral("/tmp/build keychain.keychain-db"));
    QCOMPARE(notarize({m_image}).exitCode, 0);
    QVERIFY(calls().at(2).endsWith(
        QStringLiteral(" --keychain-profile release --keychain /tmp/build keychain.keychain-db")));
}

void tst_SigningScripts::whatAppleRefusesIsAFailureWithTheReason()
{
    set(m_environment, "PCT_TEST_NOTARY_STATUS", QStringLiteral("Invalid"));
    const CommandRun run = notarize({m_image});
    QCOMPARE(run.exitCode, 1);
    QVERIFY(run.errors.contains(QStringLiteral("The signature is invalid.")));
    QVERIFY(run.errors.contains(QStringLiteral("Apple has not accepted")));
    QVERIFY(calls().last().startsWith(
        QStringLiteral("xcrun notarytool log 2efe2717-52ef-43a5-96dc-0797e4ca1041 ")));
}

void tst_SigningScripts::notarizingNeedsCredentials_data()
{
    QTest::addColumn<QString>("variable");
    QTest::addColumn<QString>("value");
    QTest::newRow("no identity") << QStringLiteral("PCT_SIGNING_IDENTITY") << QString();
    QTest::newRow("nobody's identity") << QStringLiteral("PCT_SIGNING_IDENTITY") << QStringLiteral("-");
    QTest::newRow("no profile") << QStringLiteral("PCT_NOTARY_PROFILE") << QString();
}

void tst_SigningScripts::notarizingNeedsCredentials()
{
    QFETCH(QString, variable);
    QFETCH(QString, value);
    m_environment.insert(variable, value);
    const CommandRun run = notarize({m_image});
    QCOMPARE(run.exitCode, 1);
    QVERIFY(run.errors.startsWith(QStringLiteral("notarize.sh: ")));
    QCOMPARE(calls(), QStringList());
}

void tst_SigningScripts::aMissingImageIsRefused()
{
    QVERIFY(QFile::remove(m_image));
    const CommandRun run = notarize({m_image});
    QCOMPARE(run.exitCode, 1);
    QVERIFY(run.errors.contains(QStringLiteral("is no file")));
    QCOMPARE(calls(), QStringList());
}

void tst_SigningScripts::theKeychainOfABuildServerServesCodesign()
{
    giveSecrets();
    const CommandRun run = runCommand(projectFile("packaging/macos/make-keychain.sh"),
                                      {keychain, QStringLiteral("release")}, m_environment);
    QVERIFY2(run.exitCode == 0, qPrintable(run.errors));
    const QStringList all = calls();
    QCOMPARE(all.size(), 8);
    QVERIFY(all.at(0).startsWith(QStringLiteral("security create-keychain -p ")));
    QVERIFY(all.at(3).contains(QStringLiteral(" -f pkcs12 -P secret of the file -T /usr/bin/codesign")));
    QVERIFY(all.at(4).startsWith(QStringLiteral("security set-key-partition-list ")));
    // The keychains that were searched before are searched still.
    QCOMPARE(
        all.at(6),
        QStringLiteral("security list-keychains -d user -s %1 /Users/me/login.keychain-db").arg(keychain));
    QCOMPARE(all.at(7), QStringLiteral("xcrun notarytool store-credentials release --apple-id me@example.org "
                                       "--team-id AB12CD34EF --password secret of the notary --keychain %1")
                            .arg(keychain));
    // The identity's file was decoded, and is gone.
    QCOMPARE(TestFiles::read(m_folder->filePath(QStringLiteral("log.imported"))), QByteArray("the identity"));
    const QString imported = all.at(3).section(QLatin1Char(' '), 2, 2);
    QVERIFY(imported.endsWith(QStringLiteral("identity.p12")) && !QFileInfo::exists(imported));
}

void tst_SigningScripts::aKeychainNeedsEverySecret()
{
    giveSecrets();
    m_environment.insert(QStringLiteral("PCT_NOTARY_TEAM_ID"), QString());
    const CommandRun run = runCommand(projectFile("packaging/macos/make-keychain.sh"),
                                      {keychain, QStringLiteral("release")}, m_environment);
    QCOMPARE(run.exitCode, 1);
    QCOMPARE(run.errors, QStringLiteral("make-keychain.sh: set PCT_NOTARY_TEAM_ID\n"));
    QCOMPARE(calls(), QStringList());
}

void tst_SigningScripts::wrongUsageIsTold()
{
    for (const CommandRun &run : {sign({}), sign({m_bundle, m_bundle}), notarize({})}) {
        QCOMPARE(run.exitCode, 2);
        QVERIFY(run.errors.startsWith(QStringLiteral("usage: ")));
    }
}

QTEST_GUILESS_MAIN(tst_SigningScripts)
#include "tst_SigningScripts.moc"
