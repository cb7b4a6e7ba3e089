// SPDX-License-Identifier: Apache-2.0
#include "tests/packaging/CommandRun.h"
#include "tests/support/TestFiles.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

namespace {

/// A property list as Python's own reader understands it.
QJsonObject propertyList(const QString &path)
{
    const QString program = QStringLiteral(
        "import json, plistlib, sys; print(json.dumps(plistlib.load(open(sys.argv[1], 'rb'))))");
    return QJsonDocument::fromJson(
               TestFiles::outputOf(QStringLiteral("python3"), {QStringLiteral("-c"), program, path}))
        .object();
}

QJsonObject ofType(const QJsonObject &information, const char *list, const char *key, const QString &type)
{
    for (const QJsonValue &value : information.value(QLatin1String(list)).toArray()) {
        const QJsonValue names = value.toObject().value(QLatin1String(key));
        if (names.toString() == type || names.toArray().contains(type))
            return value.toObject();
    }
    return {};
}

QStringList lines(const QByteArray &text)
{
    return QString::fromUtf8(text).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

} // namespace

/// The bundle is built here by the same modules as on a Mac, with small programs inside and with the Mac's
/// commands played by scripts.
class tst_Bundle : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void theProjectCanBeConfiguredForAMac();
    void everyPartIsInItsPlace_data();
    void everyPartIsInItsPlace();
    void bothProgramsRun();
    void thePropertyListSaysWhatTheBundleIs();
    void theNamesInThePropertyListExist();
    void packagesCanBeOpenedWithTheTool();
    void profilesCanBeOpenedWithTheTool();
    void nothingLooseIsAskedFor();
    void theIconHasEverySize();
    void theEntitlementsAskForNothing();
    void withoutAnIdentityItIsSignedForThisMacOnly();
    void theImageHoldsTheBundleAndTheLicenseOnly();
    void aMissingPartIsTold();
    void aLibraryThatWouldNotBeFoundIsTold_data();
    void aLibraryThatWouldNotBeFoundIsTold();
    void aLibraryInTheBundleIsFound_data();
    void aLibraryInTheBundleIsFound();
    void withoutARunPathNothingIsFoundOnIt();
    void theLanguagesOfTheWindowAreListed();
    void qtFindsItsTextsInTheBundle();
    void aBusyVolumeIsTriedAgain();
    void anotherFailureOfTheImageIsNotTriedAgain();

private:
    CommandRun checkBundle(const QString &variable, const QString &value) const;
    CommandRun callHdiutil(const QString &messages) const;
    QString inBundle(const QString &path) const { return m_bundle + QLatin1String("/Contents/") + path; }

    QTemporaryDir m_folder;
    QProcessEnvironment m_environment = playedMac(m_folder.filePath(QStringLiteral("log")));
    QString m_build = m_folder.filePath(QStringLiteral("build"));
    QString m_bundle = m_folder.filePath(QStringLiteral("installed/Pelix Customization Tool.app"));
    QJsonObject m_information;
};

void tst_Bundle::initTestCase()
{
    const QString cmake = QStringLiteral("cmake");
    const QStringList configure = {QStringLiteral("-S"),        projectFile("tests/packaging/bundle"),
                                   QStringLiteral("-B"),        m_build,
                                   QStringLiteral("-G"),        QStringLiteral("Ninja"),
                                   QStringLiteral("-DAPPLE=ON")};
    const QStringList build = {QStringLiteral("--build"), m_build};
    const QStringList install = {
        QStringLiteral("--install"),   m_build,
        QStringLiteral("--component"), QStringLiteral("bundle"),
        QStringLiteral("--prefix"),    m_folder.filePath(QStringLiteral("installed"))};
    for (const QStringList &arguments : {configure, build, install}) {
        const CommandRun run = runCommand(cmake, arguments, m_environment);
        QVERIFY2(run.exitCode == 0, qPrintable(run.output + run.errors));
    }
    m_information = propertyList(inBundle(QStringLiteral("Info.plist")));
    QVERIFY(!m_information.isEmpty());
}

void tst_Bundle::theProjectCanBeConfiguredForAMac()
{
    // Newer CMakes call commands of the Mac, too, which are not those that made the bundle.
    const QProcessEnvironment environment =
        playedMac(m_folder.filePath(QStringLiteral("log of the project")));
    // Qt 6's own CMake files would look for Apple's frameworks.
    const CommandRun run = runCommand(QStringLiteral("cmake"),
                                      {QStringLiteral("-S"), projectFile("."), QStringLiteral("-B"),
                                       m_folder.filePath(QStringLiteral("project")), QStringLiteral("-G"),
                                       QStringLiteral("Ninja"), QStringLiteral("-DAPPLE=ON"),
                                       QStringLiteral("-DPCT_QT_MAJOR=5")},
                                      environment);
    QVERIFY2(run.exitCode == 0, qPrintable(run.errors));
}

void tst_Bundle::everyPartIsInItsPlace_data()
{
    QTest::addColumn<bool>("isProgram");
    QTest::newRow("Info.plist") << false;
    QTest::newRow("MacOS/Pelix Customization Tool") << true;
    QTest::newRow("MacOS/pct") << true;
    QTest::newRow("Resources/AppIcon.icns") << false;
    QTest::newRow("Resources/LICENSE") << false;
    QTest::newRow("Resources/qt.conf") << false;
    QTest::newRow("Resources/completions/pct.bash") << false;
    QTest::newRow("Resources/completions/_pct") << false;
    QTest::newRow("Resources/completions/pct.fish") << false;
    QTest::newRow("Resources/man/man1/pct.1") << false;
    QTest::newRow("Resources/pcw/en-US/Welcome.html") << false;
    QTest::newRow("Resources/pcw/en-US/images/page.svg") << false;
}

void tst_Bundle::everyPartIsInItsPlace()
{
    QFETCH(bool, isProgram);
    const QFileInfo part(inBundle(QLatin1String(QTest::currentDataTag())));
    QVERIFY(part.isFile());
    QCOMPARE(part.isExecutable(), isProgram);
}

void tst_Bundle::bothProgramsRun()
{
    QCOMPARE(runCommand(inBundle(QStringLiteral("MacOS/Pelix Customization Tool")), {}).exitCode, 0);
    QCOMPARE(runCommand(inBundle(QStringLiteral("MacOS/pct")), {}).exitCode, 0);
}

void tst_Bundle::thePropertyListSaysWhatTheBundleIs()
{
    const QJsonObject expected = {
        {QStringLiteral("CFBundleInfoDictionaryVersion"), QStringLiteral("6.0")},
        {QStringLiteral("CFBundleIdentifier"), QStringLiteral("com.pelix-software.Pelix.CustomizationTool")},
        {QStringLiteral("CFBundlePackageType"), QStringLiteral("APPL")},
        {QStringLiteral("CFBundleSupportedPlatforms"), QJsonArray{QStringLiteral("MacOSX")}},
        {QStringLiteral("CFBundleExecutable"), QStringLiteral("Pelix Customization Tool")},
        {QStringLiteral("CFBundleName"), QStringLiteral("Pelix Customization Tool")},
        {QStringLiteral("CFBundleDisplayName"), QStringLiteral("Pelix Customization Tool")},
        {QStringLiteral("CFBundleIconFile"), QStringLiteral("AppIcon")},
        {QStringLiteral("CFBundleShortVersionString"), QStringLiteral("9.8.7")},
        {QStringLiteral("CFBundleVersion"), QStringLiteral("9.8.7")},
        {QStringLiteral("CFBundleDevelopmentRegion"), QStringLiteral("en")},
        {QStringLiteral("LSApplicationCategoryType"), QStringLiteral("public.app-category.utilities")},
        {QStringLiteral("LSMinimumSystemVersion"), QStringLiteral("14.0")},
        {QStringLiteral("NSPrincipalClass"), QStringLiteral("NSApplication")},
        {QStringLiteral("NSHighResolutionCapable"), true},
        {QStringLiteral("NSRequiresAquaSystemAppearance"), true},
    };
    for (auto entry = expected.begin(); entry != expected.end(); ++entry)
        QVERIFY2(m_information.value(entry.key()) == entry.value(), qPrintable(entry.key()));
    QVERIFY(m_information.value(QStringLiteral("NSHumanReadableCopyright"))
                .toString()
                .contains(QStringLiteral("Apache License 2.0")));
    const QByteArray text = TestFiles::read(inBundle(QStringLiteral("Info.plist")));
    QVERIFY2(!text.contains('@') && !text.contains("${"), "a place of the template was not filled in");
}

void tst_Bundle::theNamesInThePropertyListExist()
{
    const QString program = m_information.value(QStringLiteral("CFBundleExecutable")).toString();
    const QString icon = m_information.value(QStringLiteral("CFBundleIconFile")).toString();
    QVERIFY(QFileInfo::exists(inBundle(QStringLiteral("MacOS/") + program)));
    QVERIFY(QFileInfo::exists(inBundle(QStringLiteral("Resources/") + icon + QStringLiteral(".icns"))));
}

void tst_Bundle::packagesCanBeOpenedWithTheTool()
{
    const QJsonObject packages = ofType(m_information, "CFBundleDocumentTypes", "LSItemContentTypes",
                                        QStringLiteral("com.apple.installer-package-archive"));
    QCOMPARE(packages.value(QStringLiteral("CFBundleTypeRole")).toString(), QStringLiteral("Viewer"));
    QCOMPARE(packages.value(QStringLiteral("LSHandlerRank")).toString(), QStringLiteral("Alternate"));
}

void tst_Bundle::profilesCanBeOpenedWithTheTool()
{
    const QString type = QStringLiteral("com.apple.mobileconfig");
    const QJsonObject profiles = ofType(m_information, "CFBundleDocumentTypes", "LSItemContentTypes", type);
    QCOMPARE(profiles.value(QStringLiteral("CFBundleTypeRole")).toString(), QStringLiteral("Editor"));
    QCOMPARE(profiles.value(QStringLiteral("LSHandlerRank")).toString(), QStringLiteral("Alternate"));
    const QJsonObject imported =
        ofType(m_information, "UTImportedTypeDeclarations", "UTTypeIdentifier", type);
    QVERIFY(
        imported.value(QStringLiteral("UTTypeConformsTo")).toArray().contains(QStringLiteral("public.data")));
    QCOMPARE(imported.value(QStringLiteral("UTTypeTagSpecification"))
                 .toObject()
                 .value(QStringLiteral("public.filename-extension"))
                 .toArray(),
             QJsonArray{QStringLiteral("mobileconfig")});
}

void tst_Bundle::nothingLooseIsAskedFor()
{
    for (const QString &key : m_information.keys()) {
        QVERIFY2(!key.startsWith(QLatin1String("NSAppTransportSecurity")), qPrintable(key));
        if (key.endsWith(QLatin1String("UsageDescription")))
            QVERIFY2(m_information.value(key).toString().endsWith(QLatin1Char('.')), qPrintable(key));
    }
}

void tst_Bundle::theIconHasEverySize()
{
    const QByteArray expected = "icon_128x128.png 128 128\n"
                                "icon_128x128@2x.png 256 256\n"
                                "icon_16x16.png 16 16\n"
                                "icon_16x16@2x.png 32 32\n"
                                "icon_256x256.png 256 256\n"
                                "icon_256x256@2x.png 512 512\n"
                                "icon_32x32.png 32 32\n"
                                "icon_32x32@2x.png 64 64\n"
                                "icon_512x512.png 512 512\n"
                                "icon_512x512@2x.png 1024 1024\n";
    QStringList sizes = lines(TestFiles::read(inBundle(QStringLiteral("Resources/AppIcon.icns"))));
    QStringList wanted = lines(expected);
    sizes.sort();
    wanted.sort();
    QCOMPARE(sizes, wanted);
}

void tst_Bundle::theEntitlementsAskForNothing()
{
    const QString path = projectFile("packaging/macos/entitlements.plist");
    const QByteArray text = TestFiles::read(path);
    QCOMPARE(propertyList(path), QJsonObject());
    QVERIFY(text.contains("<dict/>"));
    QVERIFY2(!text.contains("<!--"), "the system's reader of entitlements takes no comments");
}

void tst_Bundle::withoutAnIdentityItIsSignedForThisMacOnly()
{
    const QStringList calls = lines(TestFiles::read(m_folder.filePath(QStringLiteral("log"))));
    QVERIFY(calls.size() > 2);
    const QString forBundle = QLatin1Char(' ') + m_bundle;
    QCOMPARE(calls.filter(forBundle + QLatin1Char('/')).filter(QStringLiteral("--sign - ")).size(), 8);
    QVERIFY(calls.filter(QStringLiteral("--options")).isEmpty());
    QVERIFY(calls.last().startsWith(QStringLiteral("codesign --verify --strict")));
    QVERIFY(calls.last().endsWith(forBundle));
}

void tst_Bundle::theImageHoldsTheBundleAndTheLicenseOnly()
{
    // Another kind of archive in the place of the image, which only a Mac can make.
    const QString configuration = m_build + QStringLiteral("/CPackConfig.cmake");
    QVERIFY(TestFiles::read(configuration).contains("set(CPACK_GENERATOR \"DragNDrop\")"));
    const CommandRun run =
        runCommand(QStringLiteral("cpack"),
                   {QStringLiteral("--config"), configuration, QStringLiteral("-G"), QStringLiteral("TGZ"),
                    QStringLiteral("-B"), m_folder.filePath(QStringLiteral("packed"))},
                   m_environment);
    QVERIFY2(run.exitCode == 0, qPrintable(run.output + run.errors));
    const QString name =
        QStringLiteral("Pelix-Customization-Tool-9.8.7-macOS14-") + QSysInfo::currentCpuArchitecture();
    const QString archive = m_folder.filePath(QStringLiteral("packed/%1.tar.gz").arg(name));
    QStringList top;
    for (const QString &path :
         lines(TestFiles::outputOf(QStringLiteral("bsdtar"), {QStringLiteral("-tf"), archive})))
        top << path.section(QLatin1Char('/'), 1, 1);
    top.removeDuplicates();
    top.removeAll(QString());
    top.sort();
    QCOMPARE(top, QStringList({QStringLiteral("LICENSE"), QStringLiteral("Pelix Customization Tool.app")}));
}

void tst_Bundle::aMissingPartIsTold()
{
    const QString moved = m_bundle + QStringLiteral("/moved");
    const QString part = inBundle(QStringLiteral("MacOS/pct"));
    QVERIFY(QFile::rename(part, moved));
    const CommandRun run =
        runCommand(projectFile("packaging/macos/check-bundle.sh"), {m_bundle}, m_environment);
    QVERIFY(QFile::rename(moved, part));
    QCOMPARE(run.exitCode, 1);
    QCOMPARE(run.errors, QStringLiteral("Contents/MacOS/pct is missing\n"));
}

CommandRun tst_Bundle::checkBundle(const QString &variable, const QString &value) const
{
    QProcessEnvironment environment = m_environment;
    environment.insert(variable, value);
    return runCommand(projectFile("packaging/macos/check-bundle.sh"), {m_bundle}, environment);
}

void tst_Bundle::aLibraryThatWouldNotBeFoundIsTold_data()
{
    QTest::addColumn<QString>("library");
    QTest::newRow("elsewhere") << QStringLiteral("/opt/homebrew/lib/libz.dylib");
    QTest::newRow("no framework") << QStringLiteral("@rpath/QtDBus.framework/Versions/A/QtDBus");
    QTest::newRow("not beside the program") << QStringLiteral("@executable_path/../Frameworks/libz.dylib");
    QTest::newRow("not beside the file") << QStringLiteral("@loader_path/libz.dylib");
    QTest::newRow("a relative name") << QStringLiteral("libz.dylib");
}

void tst_Bundle::aLibraryThatWouldNotBeFoundIsTold()
{
    QFETCH(QString, library);
    const CommandRun run = checkBundle(QStringLiteral("PCT_TEST_LIBRARY"), library);
    QCOMPARE(run.exitCode, 1);
    for (const char *file : {"MacOS/pct", "Frameworks/QtCore.framework/Versions/A/QtCore",
                             "PlugIns/platforms/libqcocoa.dylib"}) {
        const QString line = QStringLiteral("Contents/%1 wants %2\n").arg(QLatin1String(file), library);
        QVERIFY2(run.errors.contains(line), qPrintable(run.errors));
    }
    QVERIFY(!run.errors.contains(QStringLiteral("libSystem")));
}

void tst_Bundle::aLibraryInTheBundleIsFound_data()
{
    QTest::addColumn<QString>("library");
    QTest::newRow("nothing more") << QString();
    QTest::newRow("framework") << QStringLiteral("@rpath/QtXml.framework/Versions/A/QtXml");
    QTest::newRow("beside the program") << QStringLiteral("@executable_path/pct");
    QTest::newRow("the system's") << QStringLiteral("/System/Library/Frameworks/AppKit.framework/AppKit");
}

void tst_Bundle::aLibraryInTheBundleIsFound()
{
    QFETCH(QString, library);
    const CommandRun run = checkBundle(QStringLiteral("PCT_TEST_LIBRARY"), library);
    QVERIFY2(run.exitCode == 0, qPrintable(run.errors));
}

void tst_Bundle::withoutARunPathNothingIsFoundOnIt()
{
    const CommandRun run = checkBundle(QStringLiteral("PCT_TEST_RUN_PATH"), QStringLiteral("/nowhere"));
    QCOMPARE(run.exitCode, 1);
    QVERIFY(run.errors.contains(
        QStringLiteral("Contents/MacOS/pct wants @rpath/QtCore.framework/Versions/A/QtCore\n")));
    QVERIFY(!run.errors.contains(QStringLiteral("wants @executable_path")));
}

void tst_Bundle::theLanguagesOfTheWindowAreListed()
{
    QCOMPARE(m_information.value(QStringLiteral("CFBundleLocalizations")).toArray(),
             (QJsonArray{QStringLiteral("en"), QStringLiteral("de"), QStringLiteral("xx")}));
}

void tst_Bundle::qtFindsItsTextsInTheBundle()
{
    QVERIFY(QFileInfo::exists(inBundle(QStringLiteral("Resources/translations/qtbase_de.qm"))));
    QCOMPARE(TestFiles::read(inBundle(QStringLiteral("Resources/qt.conf"))),
             QByteArray("[Paths]\nTranslations = Resources/translations\n"));
}

CommandRun tst_Bundle::callHdiutil(const QString &messages) const
{
    const QTemporaryDir folder;
    TestFiles::write(folder.filePath(QStringLiteral("messages")), messages.toUtf8());
    QProcessEnvironment environment = m_environment;
    environment.insert(QStringLiteral("PCT_HDIUTIL_PAUSE"), QStringLiteral("0"));
    environment.insert(QStringLiteral("PCT_TEST_MESSAGES"), folder.filePath(QStringLiteral("messages")));
    return runCommand(projectFile("packaging/macos/patient-hdiutil.sh"),
                      {QStringLiteral("create"), QStringLiteral("a b.dmg")}, environment);
}

void tst_Bundle::aBusyVolumeIsTriedAgain()
{
    const QString busy = QStringLiteral("hdiutil: create failed - Resource busy\n");
    const CommandRun run = callHdiutil(busy + busy);
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(run.output, QStringLiteral("create 'a b.dmg'\n").repeated(3));
    const CommandRun givenUp = callHdiutil(busy.repeated(20));
    QCOMPARE(givenUp.exitCode, 1);
    QCOMPARE(givenUp.errors, busy.repeated(6));
}

void tst_Bundle::anotherFailureOfTheImageIsNotTriedAgain()
{
    const CommandRun run = callHdiutil(QStringLiteral("hdiutil: create failed - No space left on device\n"));
    QCOMPARE(run.exitCode, 1);
    QCOMPARE(run.output, QStringLiteral("create 'a b.dmg'\n"));
}

QTEST_GUILESS_MAIN(tst_Bundle)
#include "tst_Bundle.moc"
