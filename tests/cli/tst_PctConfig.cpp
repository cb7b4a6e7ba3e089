// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/BuildCommand.h"
#include "tests/cli/PctRunner.h"
#include "tests/cli/ShownSettings.h"
#include "tests/support/TestFiles.h"

#include <QJsonArray>
#include <QtTest>

namespace {

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

PctResult makeDocument(const PctRunner &runner, const QString &path, const QStringList &more = {},
                       const char *product = "editor")
{
    return runner.run(
        QStringList{text("config"), text("new"), text("--product"), text(product), text("--output"), path} +
        more);
}

PctResult config(const PctRunner &runner, const char *verb, const QStringList &words)
{
    return runner.run(QStringList{text("config"), text(verb)} + words);
}

/// What xmllint, which is not ours, finds in a document.
QByteArray found(const QString &document, const QString &xpath)
{
    QProcess reader;
    reader.start(text("xmllint"), {text("--xpath"), text("string(%1)").arg(xpath), document});
    reader.waitForFinished();
    return reader.readAllStandardOutput().trimmed();
}

QJsonObject shown(const PctRunner &runner, const QString &file)
{
    return runner.run({text("show"), text("--json"), file}).json().value(text("settings")).toObject();
}

/// With what only a person writes: comments, another order, and what nobody reads.
QByteArray handWritten()
{
    return "<!-- reviewed --><Profstore><Preferences note='x'>"
           "<Preference Text='LoginDomainList' String='@a.example'/>"
           "<!-- start --><Preference Text='StartPage' Mode='1' who='me'/>"
           "<Preference Text='StartPage' Mode='0'/></Preferences>"
           "<Plugins><Plugin UnloadPluginArray='PelixExport.dylib'/>"
           "<Plugin UnloadPluginArray='libMine.dylib'/></Plugins>"
           "<RibbonSetRibbonCategory><RibbonUI mine='1'/></RibbonSetRibbonCategory></Profstore>";
}

} // namespace

class tst_PctConfig : public QObject
{
    Q_OBJECT

private slots:
    void aNewDocumentIsTheOneThatAPackageCarries_data();
    void aNewDocumentIsTheOneThatAPackageCarries();
    void valuesAreTakenInWordsAndAsWritten_data();
    void valuesAreTakenInWordsAndAsWritten();
    void whatIsNoValueIsRefused_data();
    void whatIsNoValueIsRefused();
    void anUnknownNameIsAWrongLine();
    void changesKeepTheRestOfADocument();
    void aMissingPlaceIsMade();
    void unsetGivesTheDefault();
    void whatGetPrintsCanBeSet();
    void commandsAreHiddenAndShownAgain();
    void theReaderHasFewerSettings();
    void namesTellAllOfEachSetting();
    void commandsAreFoundByWords();
    void nothingIsReplacedUnlessItMayBe();
    void aFailedChangeLeavesTheDocument();
};

void tst_PctConfig::aNewDocumentIsTheOneThatAPackageCarries_data()
{
    QTest::addColumn<bool>("editor");
    QTest::newRow("editor") << true;
    QTest::newRow("reader") << false;
}

void tst_PctConfig::aNewDocumentIsTheOneThatAPackageCarries()
{
    QFETCH(bool, editor);
    const PctRunner runner;
    const QString made = runner.file(text("made.xml"));
    const QString kept = runner.file(text("kept.xml"));
    QCOMPARE(makeDocument(runner, made, {}, editor ? "editor" : "reader").exitCode, 0);
    BuildCommand build;
    build.editor = editor;
    build.input = runner.samplePackage(editor);
    build.output = runner.file(text("out.pkg"));
    build.more = QStringList{text("--keep-config"), kept, text("-q")};
    QCOMPARE(runner.run(build.arguments()).exitCode, 0);
    const QByteArray version = found(kept, text("/*/@version"));
    QByteArray expected = TestFiles::read(kept);
    expected.replace(QByteArray("version=\"" + version + "\">"), QByteArray("version=\"\">"));
    QCOMPARE(TestFiles::read(made), expected);
}

void tst_PctConfig::valuesAreTakenInWordsAndAsWritten_data()
{
    QTest::addColumn<QString>("assignment");
    QTest::addColumn<QString>("place");
    QTest::addColumn<QByteArray>("written");
    const QString preference = text("//Preference[@Text='%1']/@%2");
    const auto row = [&](const char *assignment, const char *key, const char *attribute,
                         const char *written) {
        QTest::newRow(assignment) << text(assignment) << preference.arg(text(key), text(attribute))
                                  << QByteArray(written);
    };
    const char *attachments = "DefaultLaunchAttachmentPerms";
    row("nAuthLibrary=ADAL", "AuthLibrary", "Mode", "1");
    row("nAuthLibrary=1", "AuthLibrary", "Mode", "1");
    row("bShowStartPage=false", "StartPage", "Mode", "0");
    row("bShowStartPage=0", "StartPage", "Mode", "0");
    row("nMIPCheckPolicyOnDocSave=Disabled", "bMIPCheckPolicyOnDocSave", "Mode", "0");
    row("nMIPCheckPolicyOnDocSave=Default", "bMIPCheckPolicyOnDocSave", "Mode", "");
    row("bMIPCheckPolicySet=true", "bMIPCheckPolicyOnDocSave", "Mode", "1");
    row("nFileAttachmentsMode=Disabled", attachments, "DisableOpenSaveFileAttach", "1");
    row("strDisableOpenSaveFileAttach=enabled", attachments, "DisableOpenSaveFileAttach", "0");
    row("strBuiltInPermList=.csv:2,.app:3", attachments, "BuiltInPermList", "version:1|.csv:2|.app:3");
    row("strBuiltInPermList=version:1|.csv:2|", attachments, "BuiltInPermList", "version:1|.csv:2");
    row("strLoginDomain=blacklist", "LoginDomain", "String", "2");
    row("strLoginDomain=Configure disallowed login domain blacklist", "LoginDomain", "String", "2");
    row("strLoginDomainList=@a.example, @b.example;@a.example", "LoginDomainList", "String",
        "@a.example;@b.example");
    QTest::newRow("plug-ins") << text("strUnloadPluginArray=JavaScript;PelixPortfolio.dylib")
                              << text("//Plugin/@UnloadPluginArray")
                              << QByteArray("PelixPortfolio.dylib;PelixJavaScript.dylib;");
    QTest::newRow("viewer") << text("bSetAsDefaultViewer=false") << text("//Installation_Option/@Disable")
                            << QByteArray("1");
}

void tst_PctConfig::valuesAreTakenInWordsAndAsWritten()
{
    QFETCH(QString, assignment);
    QFETCH(QString, place);
    const PctRunner runner;
    const QString made = runner.file(text("made.xml"));
    const PctResult result = makeDocument(runner, made, {text("--set"), assignment});
    QVERIFY2(result.exitCode == 0, result.err.constData());
    QTEST(found(made, place), "written");
    const QString changed = runner.file(text("changed.xml"));
    QCOMPARE(makeDocument(runner, changed).exitCode, 0);
    QCOMPARE(config(runner, "set", {changed, assignment}).exitCode, 0);
    QTEST(found(changed, place), "written");
}

void tst_PctConfig::whatIsNoValueIsRefused_data()
{
    QTest::addColumn<QString>("assignment");
    QTest::addColumn<QByteArray>("advice");
    const auto row = [](const char *assignment, const char *advice) {
        QTest::newRow(assignment) << text(assignment) << QByteArray(advice);
    };
    row("nAuthLibrary=2", "takes MSAL (0), ADAL (1), not \"2\"");
    row("bHideMyApps=perhaps", "takes false (0), true (1)");
    row("nMIPCheckPolicyOnDocSave=7", "takes Default (-1), Disabled (0), Enabled (1)");
    row("strUnloadPluginArray=Portfolo", "the nearest is \"Portfolio\"");
    row("strLoginDomainList=example.com", "such as @example.com");
    row("strBuiltInPermList=.zip:4", "a level from 0 to 3");
    row("strBuiltInPermList=zip:1", "such as .zip:1");
    row("elemRibbonCategory=<RibbonUI>", "is no XML (line 1, column");
    row("elemRibbonCategory=<Other/>", "an element \"RibbonUI\"");
    row("strLoginDomain=\x01", "takes");
}

void tst_PctConfig::whatIsNoValueIsRefused()
{
    QFETCH(QString, assignment);
    QFETCH(QByteArray, advice);
    const PctRunner runner;
    const QString made = runner.file(text("made.xml"));
    const PctResult result = makeDocument(runner, made, {text("--set"), assignment});
    QVERIFY2(result.isOneLineRefusal() || result.err.contains("config new"), result.err.constData());
    QCOMPARE(result.exitCode, 1);
    if (!assignment.contains(QChar(1)))
        QVERIFY2(result.err.contains(advice), result.err.constData());
    QVERIFY(!QFile::exists(made));
}

void tst_PctConfig::anUnknownNameIsAWrongLine()
{
    const PctRunner runner;
    const QString made = runner.file(text("made.xml"));
    const PctResult misspelt = makeDocument(runner, made, {text("--set"), text("nAuthLibary=1")});
    QCOMPARE(misspelt.exitCode, 2);
    QVERIFY2(misspelt.err.contains("the nearest is \"nAuthLibrary\""), misspelt.err.constData());
    QCOMPARE(makeDocument(runner, made, {text("--set"), text("nAuthLibrary")}).exitCode, 2);
    QCOMPARE(makeDocument(runner, made, {text("--hide-command"), text("Ribbon_Page_Hom")}).exitCode, 1);
    QVERIFY(!QFile::exists(made));
    QCOMPARE(makeDocument(runner, made).exitCode, 0);
    QCOMPARE(config(runner, "set", {made}).exitCode, 2);
    QCOMPARE(config(runner, "get", {made, text("Nothing")}).exitCode, 2);
}

void tst_PctConfig::changesKeepTheRestOfADocument()
{
    const PctRunner runner;
    const QString document = runner.document("PelixPDFEditor", handWritten());
    const PctResult result =
        config(runner, "set", {document, text("bShowStartPage=true"), text("strUnloadPluginArray=Export")});
    QVERIFY2(result.exitCode == 0, result.err.constData());
    const QByteArray bytes = TestFiles::read(document);
    for (const char *kept : {"<!-- reviewed -->", "<!-- start -->", "note=\"x\"", "who=\"me\"", "mine=\"1\""})
        QVERIFY2(bytes.contains(kept), bytes.constData());
    QCOMPARE(found(document, text("(//Preference[@Text='StartPage'])[1]/@Mode")), QByteArray("1"));
    QCOMPARE(found(document, text("(//Preference[@Text='StartPage'])[2]/@Mode")), QByteArray("1"));
    QCOMPARE(found(document, text("count(//Plugin)")), QByteArray("1"));
    QCOMPARE(found(document, text("//Plugin/@UnloadPluginArray")), QByteArray("PelixExport.dylib;"));
    QCOMPARE(found(document, text("count(//Preference)")), QByteArray("3"));
    QCOMPARE(shown(runner, document),
             shownWith({{text("strUnloadPluginArray"), text("PelixExport.dylib;")},
                        {text("strLoginDomainList"), text("@a.example")},
                        {text("elemRibbonCategory"), text("<RibbonUI mine=\"1\"/>")}}));
}

void tst_PctConfig::aMissingPlaceIsMade()
{
    const PctRunner runner;
    const QString document = runner.document("PelixPDFEditor", "");
    const QStringList values{text("bHideMyApps=true"), text("strUnloadPluginArray=Export"),
                             text("bSetAsDefaultViewer=false"), text("strBuiltInPermList=.zip:3")};
    QCOMPARE(config(runner, "set", QStringList{document} + values).exitCode, 0);
    QCOMPARE(shown(runner, document), shownWith({{text("bHideMyApps"), true},
                                                 {text("strUnloadPluginArray"), text("PelixExport.dylib;")},
                                                 {text("strBuiltInPermList"), text("version:1|.zip:3")},
                                                 {text("strDisableOpenSaveFileAttach"), text("")},
                                                 {text("bSetAsDefaultViewer"), false}}));
}

void tst_PctConfig::unsetGivesTheDefault()
{
    const PctRunner runner;
    const QString document = runner.document("PelixPDFEditor", handWritten());
    QCOMPARE(
        config(runner, "unset",
               {document, text("bShowStartPage"), text("strUnloadPluginArray"), text("elemRibbonCategory")})
            .exitCode,
        0);
    QCOMPARE(shown(runner, document), shownWith({{text("strLoginDomainList"), text("@a.example")}}));
}

void tst_PctConfig::whatGetPrintsCanBeSet()
{
    const PctRunner runner;
    const QString first = runner.file(text("first.xml"));
    const QString second = runner.file(text("second.xml"));
    const QStringList values{text("--set"),          text("nAuthLibrary=ADAL"),
                             text("--set"),          text("strUnloadPluginArray=Export,JavaScript"),
                             text("--set"),          text("strLoginDomain=2"),
                             text("--set"),          text("nMIPCheckPolicyOnDocSave=0"),
                             text("--set"),          text("nFileAttachmentsMode=1"),
                             text("--hide-command"), text("Ribbon_Page_Home")};
    QCOMPARE(makeDocument(runner, first, values).exitCode, 0);
    QCOMPARE(makeDocument(runner, second).exitCode, 0);
    const PctResult got = config(runner, "get", {first});
    QCOMPARE(got.exitCode, 0);
    QStringList lines = QString::fromUtf8(got.out).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), shownDefaults().size());
    // Two settings of one place: the second one has its default in every document.
    lines.removeAll(text("nFileAttachmentsMode=-1"));
    QCOMPARE(config(runner, "set", QStringList{second} + lines).exitCode, 0);
    QCOMPARE(TestFiles::read(second), TestFiles::read(first));
    QCOMPARE(config(runner, "get", {first, text("nAuthLibrary")}).out, QByteArray("ADAL\n"));
    QCOMPARE(
        config(runner, "get", {first, text("nAuthLibrary"), text("--json")}).json().value(text("settings")),
        QJsonValue(QJsonObject{{text("nAuthLibrary"), 1}}));
}

void tst_PctConfig::commandsAreHiddenAndShownAgain()
{
    const PctRunner runner;
    const QString document = runner.file(text("made.xml"));
    QCOMPARE(makeDocument(runner, document).exitCode, 0);
    const QByteArray before = TestFiles::read(document);
    const QStringList commands{text("--hide-command"), text("Ribbon_Action_FilePage_Open/Computer"),
                               text("--quick-access"), text("Ribbon_Action_MenuBar_Save")};
    QCOMPARE(config(runner, "set", QStringList{document} + commands).exitCode, 0);
    QCOMPARE(found(document, text("//SubItem[@Hidden='1']/@Text")), QByteArray("Computer"));
    QCOMPARE(found(document, text("//QuickAccessBar/control/@action")),
             QByteArray("Ribbon_Action_MenuBar_Save"));
    QCOMPARE(config(runner, "unset", QStringList{document} + commands).exitCode, 0);
    QCOMPARE(TestFiles::read(document), before);
}

void tst_PctConfig::theReaderHasFewerSettings()
{
    const PctRunner runner;
    const QString made = runner.file(text("made.xml"));
    const PctResult refused = makeDocument(runner, made, {text("--set"), text("bHideMyApps=true")}, "reader");
    QVERIFY2(refused.err.contains("only the Editor has bHideMyApps"), refused.err.constData());
    const PctResult plugin =
        makeDocument(runner, made, {text("--set"), text("strUnloadPluginArray=PelixOcr.dylib")}, "reader");
    QCOMPARE(plugin.exitCode, 1);
    QVERIFY(!QFile::exists(made));
    QCOMPARE(makeDocument(runner, made, {text("--set"), text("bShowStartPage=false")}, "reader").exitCode, 0);
    QCOMPARE(found(made, text("name(/*)")), QByteArray("PelixPDFReader"));
}

void tst_PctConfig::namesTellAllOfEachSetting()
{
    const PctRunner runner;
    const PctResult result = config(runner, "names", {text("--product"), text("editor"), text("--json")});
    QJsonObject defaults;
    for (const QJsonValue &value : result.json().value(text("settings")).toArray()) {
        const QJsonObject setting = value.toObject();
        defaults.insert(setting.value(text("name")).toString(), setting.value(text("default")));
        for (const char *member : {"meaning", "title", "type", "help"})
            QVERIFY2(!setting.value(text(member)).toString().isEmpty(), member);
        QVERIFY(!setting.value(text("products")).toArray().isEmpty());
    }
    QCOMPARE(defaults, shownDefaults());
    const PctResult reader = config(runner, "names", {text("--product"), text("reader")});
    QVERIFY(reader.out.contains(
        "nAuthLibrary\n  meaning   MIP sign-in library\n  type      integer: MSAL (0), ADAL (1)\n"));
    QVERIFY(reader.out.contains("JavaScript (PelixJavaScript.dylib)"));
    QVERIFY(!reader.out.contains("bHideMyApps"));
}

void tst_PctConfig::commandsAreFoundByWords()
{
    const PctRunner runner;
    const PctResult all = config(runner, "commands", {text("--json")});
    QCOMPARE(all.json().value(text("commands")).toArray().size(), 622);
    const PctResult rotate = config(runner, "commands", {text("home"), text("rotate left")});
    QCOMPARE(rotate.out,
             QByteArray("Ribbon commands\n  Ribbon_Menu_Item_RotateLeft  Home > Rotate > Rotate View > "
                        "Rotate Left\n"));
    QCOMPARE(config(runner, "commands", {text("no such word")}).exitCode, 1);
    const PctResult reader = config(runner, "commands", {text("--product"), text("reader"), text("Convert")});
    QVERIFY(!reader.out.contains("Ribbon_Page_Convert"));
}

void tst_PctConfig::nothingIsReplacedUnlessItMayBe()
{
    const PctRunner runner;
    const QString made = runner.file(text("made.xml"));
    TestFiles::write(made, "mine");
    QVERIFY(makeDocument(runner, made).isOneLineRefusal());
    QCOMPARE(TestFiles::read(made), QByteArray("mine"));
    QCOMPARE(makeDocument(runner, made, {text("--force")}).exitCode, 0);
    const QString link = runner.file(text("link.xml"));
    QVERIFY(QFile::link(made, link));
    const QByteArray before = TestFiles::read(made);
    QVERIFY(config(runner, "set", {link, text("bShowStartPage=false")}).isOneLineRefusal());
    QCOMPARE(TestFiles::read(made), before);
}

void tst_PctConfig::aFailedChangeLeavesTheDocument()
{
    const PctRunner runner;
    const QString document = runner.document("PelixPDFEditor", handWritten());
    const QByteArray before = TestFiles::read(document);
    const PctResult result = config(
        runner, "set", {document, text("bShowStartPage=true"), text("nAuthLibrary=x"), text("--json")});
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(result.json().value(text("succeeded")), QJsonValue(false));
    QCOMPARE(TestFiles::read(document), before);
    const QString package = runner.samplePackage(true);
    QVERIFY(config(runner, "set", {package, text("bShowStartPage=true")}).isOneLineRefusal());
}

QTEST_GUILESS_MAIN(tst_PctConfig)
#include "tst_PctConfig.moc"
