// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/BuildCommand.h"
#include "tests/cli/ProfileRunner.h"
#include "tests/cli/ShownSettings.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

namespace {

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

/// Differs from the defaults in every setting that a document of the Editor carries.
QByteArray everySetting()
{
    return "<Profstore><Preferences>"
           "<Preference Text='StartPage' Mode='0'/>"
           "<Preference Text='Advertise' Disable='1'/>"
           "<Preference Text='bMIPCheckPolicyOnDocSave' Mode='1'/>"
           "<Preference Text='AuthLibrary' Mode='1'/>"
           "<Preference Text='DefaultLaunchAttachmentPerms' Mode='1' BuiltInPermList='version:1|.exe:3'"
           " DisableOpenSaveFileAttach='1'/>"
           "<Preference Text='HideMyApps' Mode='1'/>"
           "<Preference Text='iManage10loginMethod' UseOAuth2='1'/>"
           "<Preference Text='LoginDomain' String='2'/>"
           "<Preference Text='LoginDomainList' String='a.example;b.example'/>"
           "<Preference Text='SupportExtSSO' Mode='1'/></Preferences>"
           "<Plugins><Plugin Text='Plugin' UnloadPluginArray='libOne.dylib;libTwo.dylib;'/></Plugins>"
           "<Installation_Options><Installation_Option Disable='1' "
           "Text='SetAsDefaultViewer'/></Installation_Options>"
           "<RibbonSetRibbonCategory><RibbonUI name='r'><Tab/></RibbonUI></RibbonSetRibbonCategory>"
           "<RibbonSetTabElements><QuickAccessBar name='q'/></RibbonSetTabElements></Profstore>";
}

QJsonObject everySettingJson()
{
    return shownWith({{text("bShowStartPage"), false},
                      {text("bRemoveAdvertise"), true},
                      {text("strDisableOpenSaveFileAttach"), text("1")},
                      {text("nFileAttachmentsMode"), -1},
                      {text("strBuiltInPermList"), text("version:1|.exe:3")},
                      {text("bDisableOpenFileAll"), true},
                      {text("strUnloadPluginArray"), text("libOne.dylib;libTwo.dylib;")},
                      {text("bMIPCheckPolicySet"), true},
                      {text("nMIPCheckPolicyOnDocSave"), 1},
                      {text("nAuthLibrary"), 1},
                      {text("bHideMyApps"), true},
                      {text("bSupportExtSSO"), true},
                      {text("elemRibbonCategory"), text("<RibbonUI name=\"r\"><Tab/></RibbonUI>")},
                      {text("elemQuickAccessBar"), text("<QuickAccessBar name=\"q\"/>")},
                      {text("bUseOAuth2"), true},
                      {text("strLoginDomain"), text("2")},
                      {text("strLoginDomainList"), text("a.example;b.example")},
                      {text("bSetAsDefaultViewer"), false}});
}

PctResult showJson(const PctRunner &runner, const QString &file)
{
    return runner.run({text("show"), text("--json"), file});
}

QJsonObject settingsOf(const PctResult &result)
{
    return result.json().value(text("settings")).toObject();
}

} // namespace

class tst_PctShow : public QObject
{
    Q_OBJECT

private slots:
    void anEmptyDocumentShowsTheDefaults();
    void everySettingOfADocumentIsShown();
    void theProductComesFromTheRootElement();
    void readableOutputIsAlignedAndHarmless();
    void longTextsAreShownWhole();
    void aPackageShowsTheSettingsThatItWasBuiltWith();
    void aPackageShowsAsItsKeptDocumentDoes();
    void aProfileShowsTheSettingsThatItWasMadeWith();
    void aPackageThatWasNotCustomizedIsRefused_data();
    void aPackageThatWasNotCustomizedIsRefused();
    void theContentsDecideNotTheName();
};

void tst_PctShow::anEmptyDocumentShowsTheDefaults()
{
    const PctRunner runner;
    const PctResult result = showJson(runner, runner.document("PelixPDFEditor", ""));
    QVERIFY2(result.exitCode == 0, result.err.constData());
    const QJsonObject expected{{text("kind"), text("document")},
                               {text("product"), text("editor")},
                               {text("settings"), shownDefaults()}};
    QCOMPARE(result.json(), expected);
}

void tst_PctShow::everySettingOfADocumentIsShown()
{
    const PctRunner runner;
    const PctResult result = showJson(runner, runner.document("PelixPDFEditor", everySetting()));
    QCOMPARE(settingsOf(result), everySettingJson());
}

void tst_PctShow::theProductComesFromTheRootElement()
{
    const PctRunner runner;
    const PctResult reader = showJson(runner, runner.document("PelixPDFReader", ""));
    QCOMPARE(reader.json().value(text("product")).toString(), text("reader"));
    const PctResult other = showJson(runner, runner.document("pelixpdfeditor", ""));
    QVERIFY2(other.isOneLineRefusal(), other.err.constData());
    QVERIFY2(other.err.contains("root element is \"pelixpdfeditor\""), other.err.constData());
}

void tst_PctShow::readableOutputIsAlignedAndHarmless()
{
    const PctRunner runner;
    const QByteArray domains =
        "<Profstore><Preferences><Preference Text='LoginDomainList' String='a&#10;b\u202ec'/>"
        "</Preferences></Profstore>";
    const PctResult result = runner.run({text("show"), runner.document("PelixPDFEditor", domains)});
    const QStringList lines = QString::fromUtf8(result.out).split(QLatin1Char('\n'));
    QCOMPARE(lines.size(), 1 + shownDefaults().size() + 1);
    QCOMPARE(lines.first(), text("Pelix PDF Editor document"));
    QCOMPARE(lines.at(1), text("  bShowStartPage                true"));
    QVERIFY(lines.contains(text("  strDisableOpenSaveFileAttach  \"Default\"")));
    QVERIFY(lines.contains(text("  elemRibbonCategory            none")));
    QVERIFY(lines.contains(text("  strLoginDomainList            \"a\\nb\\u202ec\"")));
}

/// Of characters that take several units in any encoding, so that none may be cut in half on its way.
void tst_PctShow::longTextsAreShownWhole()
{
    const PctRunner runner;
    for (const char *beginning : {"", "x"}) {
        const QByteArray value = beginning + QByteArray("\xf0\x9f\x98\x80").repeated(50 * 1000);
        const QByteArray preference = "<Preference Text=\"LoginDomain\" String=\"" + value + "\"/>";
        const QString path =
            runner.document("PelixPDFEditor", "<Preferences>" + preference + "</Preferences>");
        const PctResult result = runner.run({text("show"), path});
        QCOMPARE(result.exitCode, 0);
        QVERIFY(result.out.contains(QByteArray("  \"" + value + "\"\n")));
    }
}

void tst_PctShow::aPackageShowsTheSettingsThatItWasBuiltWith()
{
    const PctRunner runner;
    const BuildCommand build{true,
                             runner.samplePackage(true),
                             runner.file(text("out.pkg")),
                             {text("--config"), runner.document("PelixPDFEditor", everySetting())}};
    const PctResult built = runner.run(build.arguments());
    QVERIFY2(built.exitCode == 0, built.err.constData());
    const PctResult shown = showJson(runner, build.output);
    QVERIFY2(shown.exitCode == 0, shown.err.constData());
    QCOMPARE(shown.json().value(text("kind")).toString(), text("package"));
    QCOMPARE(shown.json().value(text("product")).toString(), text("editor"));
    QCOMPARE(settingsOf(shown), everySettingJson());
    QCOMPARE(runner.temporaryLeftovers(), QStringList());
}

void tst_PctShow::aPackageShowsAsItsKeptDocumentDoes()
{
    const PctRunner runner;
    const QString kept = runner.file(text("kept.xml"));
    const BuildCommand build{
        false, runner.samplePackage(false), runner.file(text("out.pkg")), {text("--keep-config"), kept}};
    QCOMPARE(runner.run(build.arguments()).exitCode, 0);
    const QJsonObject settings = settingsOf(showJson(runner, build.output));
    QCOMPARE(settings.size(), shownDefaults().size());
    QCOMPARE(settings, settingsOf(showJson(runner, kept)));
}

void tst_PctShow::aProfileShowsTheSettingsThatItWasMadeWith()
{
    const ProfileRunner runner;
    const QString document = runner.document("PelixPDFEditor", everySetting());
    const PctResult made = runner.makeProfile(true, {text("--config"), document});
    QVERIFY2(made.exitCode == 0, made.err.constData());
    // A profile says the attachment permission by the mode alone and cannot choose the default viewer.
    QJsonObject expected = everySettingJson();
    expected.insert(text("nFileAttachmentsMode"), 2);
    const PctResult shown = showJson(runner, runner.output());
    QCOMPARE(shown.json().value(text("kind")).toString(), text("profile"));
    QCOMPARE(settingsOf(shown), asAProfileShows(expected));
}

void tst_PctShow::aPackageThatWasNotCustomizedIsRefused_data()
{
    QTest::addColumn<bool>("editor");
    QTest::newRow("editor") << true;
    QTest::newRow("reader") << false;
}

void tst_PctShow::aPackageThatWasNotCustomizedIsRefused()
{
    QFETCH(bool, editor);
    const PctRunner runner;
    const PctResult result = runner.run({text("show"), runner.samplePackage(editor)});
    QVERIFY2(result.isOneLineRefusal(), result.err.constData());
    QVERIFY2(result.err.contains("holds no ProfStore.xml"), result.err.constData());
    QCOMPARE(runner.temporaryLeftovers(), QStringList());
}

void tst_PctShow::theContentsDecideNotTheName()
{
    const PctRunner runner;
    const PctResult document = showJson(runner, runner.document("PelixPDFEditor", "", text("a.pkg")));
    QCOMPARE(document.json().value(text("kind")).toString(), text("document"));
    const PctResult package = runner.run({text("show"), runner.samplePackage(true, text("a.xml"))});
    QVERIFY2(package.err.contains("holds no ProfStore.xml"), package.err.constData());
}

QTEST_GUILESS_MAIN(tst_PctShow)
#include "tst_PctShow.moc"
