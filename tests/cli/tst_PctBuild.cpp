// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/BuildCommand.h"
#include "tests/cli/PctRunner.h"
#include "tests/config/SettingOracle.h"
#include "tests/support/TestFiles.h"

#include <QJsonArray>
#include <QtTest>

namespace {

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

/// A document of the Editor with settings that show in the document, in the script and in both.
QByteArray managedSettings()
{
    return "<Profstore><Preferences>"
           "<Preference Text='StartPage' Mode='0'/>"
           "<Preference Text='Advertise' Disable='1'/>"
           "<Preference Text='DefaultLaunchAttachmentPerms' Mode='1' BuiltInPermList='version:1|.exe:3'"
           " DisableOpenSaveFileAttach='1'/>"
           "<Preference Text='HideMyApps' Mode='1'/>"
           "<Preference Text='iManage10loginMethod' UseOAuth2='1'/>"
           "<Preference Text='LoginDomain' String='1'/>"
           "<Preference Text='LoginDomainList' String='a.example'/></Preferences>"
           "<Installation_Options><Installation_Option Disable='1' "
           "Text='SetAsDefaultViewer'/></Installation_Options>"
           "</Profstore>";
}

QByteArray startPage(const char *mode)
{
    return QByteArray("<Profstore><Preferences><Preference Text='StartPage' Mode='") + mode +
           "'/></Preferences></Profstore>";
}

QStringList warningCodes(const QJsonObject &json)
{
    QStringList codes;
    for (const QJsonValue &warning : json.value(text("warnings")).toArray())
        codes.append(warning.toObject().value(text("code")).toString());
    return codes;
}

} // namespace

/// What `pct build` makes, taken apart by other programs.
class tst_PctBuild : public QObject
{
    Q_OBJECT

private slots:
    void makesACustomizedPackage_data();
    void makesACustomizedPackage();
    void leavesEverythingElseInThePackageAsItWas();
    void theDocumentsSettingsReachThePackage();
    void aReaderIsNotGivenWhatOnlyTheEditorHas();
    void theKeptDocumentIsThePackagesOwn();
    void jsonSaysWhatWasMade();
    void jsonSaysWhyNothingWasMade();
    void warningsAreLinesAndJson();
    void theVendorsSignatureIsNotCarriedSilently();
    void aCustomizedPackageIsRefused();
    void theOtherProductsPackageIsRefused();
    void twoBuildsOfEquallyNamedPackagesDoNotMeet();
};

void tst_PctBuild::makesACustomizedPackage_data()
{
    QTest::addColumn<bool>("editor");
    QTest::addColumn<QByteArray>("root");
    QTest::addColumn<QByteArray>("version");
    QTest::newRow("editor") << true << QByteArray("PelixPDFEditor") << QByteArray("13.1.2");
    QTest::newRow("reader") << false << QByteArray("PelixPDFReader") << QByteArray();
}

void tst_PctBuild::makesACustomizedPackage()
{
    QFETCH(bool, editor);
    QFETCH(QByteArray, root);
    QFETCH(QByteArray, version);
    const PctRunner runner;
    const BuildCommand build{editor, runner.samplePackage(editor), runner.file(text("out.pkg")), {}};
    const PctResult result = runner.run(build.arguments());
    QVERIFY2(result.exitCode == 0, result.err.constData());
    QCOMPARE(result.err, QByteArray());
    QCOMPARE(result.out, build.output.toUtf8() + '\n');
    QCOMPARE(runner.temporaryLeftovers(), QStringList());
    QCOMPARE(runner.files().size(), 2);

    const ExpandedPackage made(build.output);
    QCOMPARE(made.setting(text("name(/*)")), root);
    QCOMPARE(made.setting(text("/*/@version")), version);
    QCOMPARE(made.setting(text("count(//Preference)")),
             QByteArray::number(SettingOracle::preferenceKeys().size()));
    const QByteArray postinstall = made.script(text("postinstall"));
    QVERIFY(postinstall.contains("\neditorXmlFileCopy=1\n"));
    QVERIFY(postinstall.contains("\nsetdefaultpdf=1\n"));
    QVERIFY(!postinstall.contains("iManage10"));
    QVERIFY(postinstall.contains("\nexport HOME=\"${currentuserhome}\"\n"));
    QVERIFY(made.script(text("preinstall")).contains("\nexport HOME=\"${currentuserhome}\"\n"));
    QVERIFY(QFileInfo(made.scriptPath(text("duti"))).isExecutable());
}

void tst_PctBuild::leavesEverythingElseInThePackageAsItWas()
{
    const PctRunner runner;
    const BuildCommand build{true, runner.samplePackage(true), runner.file(text("out.pkg")), {}};
    const QByteArray input = TestFiles::read(build.input);
    QCOMPARE(runner.run(build.arguments()).exitCode, 0);
    QVERIFY(TestFiles::read(build.input) == input);
    const ExpandedPackage before(build.input);
    const ExpandedPackage after(build.output);
    for (const auto *member : {"Payload", "Bom", "PackageInfo", "../Distribution"})
        QVERIFY2(before.member(text(member)) == after.member(text(member)), member);
    for (const auto *script : {"._postinstall", "legacy-plugins.txt"})
        QVERIFY2(before.script(text(script)) == after.script(text(script)), script);
    QCOMPARE(QFile::symLinkTarget(after.scriptPath(text("obsolete-plugins.txt"))),
             after.scriptPath(text("legacy-plugins.txt")));
}

void tst_PctBuild::theDocumentsSettingsReachThePackage()
{
    const PctRunner runner;
    const QString config = runner.document("PelixPDFEditor", managedSettings());
    const BuildCommand build{
        true, runner.samplePackage(true), runner.file(text("out.pkg")), {text("--config"), config}};
    const PctResult result = runner.run(build.arguments());
    QVERIFY2(result.exitCode == 0 && result.err.isEmpty(), result.err.constData());

    const ExpandedPackage made(build.output);
    const QString permissions = text("DefaultLaunchAttachmentPerms");
    QCOMPARE(made.setting(preferencePath(text("StartPage"), text("Mode"))), QByteArray("0"));
    QCOMPARE(made.setting(preferencePath(text("Advertise"), text("Disable"))), QByteArray("1"));
    QCOMPARE(made.setting(preferencePath(permissions, text("BuiltInPermList"))),
             QByteArray("version:1|.exe:3"));
    QCOMPARE(made.setting(preferencePath(permissions, text("DisableOpenSaveFileAttach"))), QByteArray("1"));
    QCOMPARE(made.setting(preferencePath(text("iManage10loginMethod"), text("UseOAuth2"))), QByteArray("1"));
    QCOMPARE(made.setting(preferencePath(text("LoginDomainList"), text("String"))), QByteArray("a.example"));
    QCOMPARE(made.setting(text("//Installation_Option/@Disable")), QByteArray("1"));
    const QByteArray postinstall = made.script(text("postinstall"));
    QVERIFY(postinstall.contains("\nplistValue=\"iManage10/loginMethod/UseOAuth2:1;General/"));
    QVERIFY(postinstall.contains("\nsetdefaultpdf=0\n"));
    QVERIFY(!QFile::exists(made.scriptPath(text("duti"))));
}

void tst_PctBuild::aReaderIsNotGivenWhatOnlyTheEditorHas()
{
    const PctRunner runner;
    const QString config = runner.document("PelixPDFEditor", managedSettings());
    const BuildCommand build{
        false, runner.samplePackage(false), runner.file(text("out.pkg")), {text("--config"), config}};
    const PctResult result = runner.run(build.arguments());
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.messages().size(), 1);
    QVERIFY2(result.err.startsWith(
                 QByteArray("pct: " + config.toUtf8() + ": warning: is a document of the Pelix PDF Editor")),
             result.err.constData());

    const ExpandedPackage made(build.output);
    QCOMPARE(made.setting(preferencePath(text("StartPage"), text("Mode"))), QByteArray("0"));
    QCOMPARE(made.setting(preferencePath(text("Advertise"), text("Disable"))), QByteArray("0"));
    QCOMPARE(made.setting(preferencePath(text("HideMyApps"), text("Mode"))), QByteArray("0"));
    QCOMPARE(made.setting(preferencePath(text("LoginDomain"), text("String"))), QByteArray("2"));
    QCOMPARE(made.setting(preferencePath(text("LoginDomainList"), text("String"))), QByteArray());
    QVERIFY(!made.script(text("postinstall")).contains("iManage10"));
}

void tst_PctBuild::theKeptDocumentIsThePackagesOwn()
{
    const PctRunner runner;
    const QString kept = runner.file(text("kept.xml"));
    const BuildCommand build{true,
                             runner.samplePackage(true),
                             runner.file(text("out.pkg")),
                             {text("--keep-config"), text("kept.xml")}};
    QCOMPARE(runner.run(build.arguments()).exitCode, 0);
    const QByteArray document = TestFiles::read(kept);
    QVERIFY(document.startsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<PelixPDFEditor "));
    QVERIFY(document == ExpandedPackage(build.output).script(text("ProfStore.xml")));
}

void tst_PctBuild::jsonSaysWhatWasMade()
{
    const PctRunner runner;
    const QString config = runner.document("PelixPDFEditor", "");
    const QString kept = runner.file(text("kept.xml"));
    const BuildCommand build{true,
                             runner.samplePackage(true),
                             runner.file(text("out.pkg")),
                             {text("--json"), text("--config"), config, text("--keep-config"), kept}};
    const PctResult result = runner.run(build.arguments());
    const QJsonObject expected{
        {text("succeeded"), true},         {text("problem"), QJsonValue()}, {text("product"), text("editor")},
        {text("version"), text("13.1.2")}, {text("input"), build.input},    {text("output"), build.output},
        {text("config"), config},          {text("keptDocument"), kept},    {text("warnings"), QJsonArray()},
        {text("verified"), false},         {text("provenance"), QJsonValue()},
    };
    QCOMPARE(result.json(), expected);
    QCOMPARE(result.err, QByteArray());
}

void tst_PctBuild::jsonSaysWhyNothingWasMade()
{
    const PctRunner runner;
    const QString missing = runner.file(text("missing.pkg"));
    const BuildCommand build{true, missing, runner.file(text("out.pkg")), {text("--json")}};
    const PctResult result = runner.run(build.arguments());
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(result.messages().size(), 1);
    const QJsonObject json = result.json();
    QCOMPARE(json.value(text("succeeded")), QJsonValue(false));
    const QJsonObject problem = json.value(text("problem")).toObject();
    QCOMPARE(problem.value(text("file")).toString(), missing);
    QVERIFY(problem.value(text("text")).toString().startsWith(text("does not exist")));
}

void tst_PctBuild::warningsAreLinesAndJson()
{
    const PctRunner runner;
    const QString package =
        runner.alteredPackage(true, text("postinstall"), text("s/^setdefaultpdf=0/viewer=0/"));
    const QString config = runner.document("PelixPDFReader", "");
    BuildCommand build{
        true, package, runner.file(text("out.pkg")), {text("--json"), text("--config"), config}};
    const PctResult result = runner.run(build.arguments());
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.messages().size(), 2);
    for (const QString &message : result.messages())
        QVERIFY2(message.contains(text(": warning: ")), qPrintable(message));
    const QStringList codes{text("document-of-other-product"), text("viewer-switch-missing")};
    QCOMPARE(warningCodes(result.json()), codes);

    build.more = QStringList{text("-q"), text("--force"), text("--config"), config};
    const PctResult quiet = runner.run(build.arguments());
    QCOMPARE(quiet.exitCode, 0);
    QCOMPARE(quiet.out + quiet.err, QByteArray());
}

void tst_PctBuild::theVendorsSignatureIsNotCarriedSilently()
{
    const PctRunner runner;
    runner.replaceTool(text("xar"), "\"$real\" \"$@\" || exit\n"
                                    "case $1 in --dump-toc=*) toc=${1#--dump-toc=} ;; *) exit 0 ;; esac\n"
                                    "sed 's|<toc>|<toc><signature style=\"RSA\"/>|' \"$toc\" > \"$toc.new\"\n"
                                    "mv \"$toc.new\" \"$toc\"\n");
    const QString package = runner.samplePackage(true);
    const PctResult checked =
        runner.run({text("check"), text("--product"), text("editor"), text("--json"), package});
    QCOMPARE(checked.exitCode, 0);
    QCOMPARE(checked.json().value(text("package")).toObject().value(text("signed")), QJsonValue(true));
    QCOMPARE(warningCodes(checked.json()), QStringList{text("signature-dropped")});
    const BuildCommand build{true, package, runner.file(text("out.pkg")), {}};
    const PctResult built = runner.run(build.arguments());
    QCOMPARE(built.exitCode, 0);
    QCOMPARE(built.messages().size(), 1);
    QVERIFY2(built.err.contains(": warning: ") && built.err.contains("signature"), built.err.constData());
}

void tst_PctBuild::aCustomizedPackageIsRefused()
{
    const PctRunner runner;
    const BuildCommand first{true, runner.samplePackage(true), runner.file(text("first.pkg")), {}};
    QCOMPARE(runner.run(first.arguments()).exitCode, 0);
    const BuildCommand second{true, first.output, runner.file(text("second.pkg")), {}};
    const PctResult result = runner.run(second.arguments());
    QVERIFY2(result.isOneLineRefusal(), result.err.constData());
    QVERIFY2(result.err.contains("was customized before"), result.err.constData());
    QVERIFY(!QFile::exists(second.output));
    QCOMPARE(runner.temporaryLeftovers(), QStringList());
}

void tst_PctBuild::theOtherProductsPackageIsRefused()
{
    const PctRunner runner;
    const BuildCommand build{false, runner.samplePackage(true), runner.file(text("out.pkg")), {}};
    const PctResult result = runner.run(build.arguments());
    QVERIFY2(result.isOneLineRefusal(), result.err.constData());
    QVERIFY2(result.err.contains("use --product editor"), result.err.constData());
    QVERIFY(!QFile::exists(build.output));
}

void tst_PctBuild::twoBuildsOfEquallyNamedPackagesDoNotMeet()
{
    const PctRunner runner;
    const QString package = runner.samplePackage(true);
    QProcess processes[2];
    QString outputs[2];
    for (int i = 0; i < 2; ++i) {
        const QString name = QString::number(i);
        const QString config =
            runner.document("PelixPDFEditor", startPage(qPrintable(name)), name + text(".xml"));
        outputs[i] = runner.file(name + text(".pkg"));
        runner.start(processes[i],
                     BuildCommand{true, package, outputs[i], {text("--config"), config}}.arguments());
    }
    for (int i = 0; i < 2; ++i) {
        const PctResult result = PctRunner::waitFor(processes[i]);
        QVERIFY2(result.exitCode == 0, result.err.constData());
        QCOMPARE(ExpandedPackage(outputs[i]).setting(preferencePath(text("StartPage"), text("Mode"))),
                 QByteArray::number(i));
    }
    QCOMPARE(runner.temporaryLeftovers(), QStringList());
}

QTEST_GUILESS_MAIN(tst_PctBuild)
#include "tst_PctBuild.moc"
