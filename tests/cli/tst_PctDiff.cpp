// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/BuildCommand.h"
#include "tests/cli/ProfileRunner.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

#include <QJsonArray>

namespace {

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

QByteArray settings(const QByteArray &preferences, const QByteArray &ribbon = QByteArray())
{
    return "<Profstore><Preferences>" + preferences + "</Preferences><RibbonSetRibbonCategory>" + ribbon +
           "</RibbonSetRibbonCategory></Profstore>";
}

PctResult compare(const PctRunner &runner, const QString &first, const QString &second)
{
    return runner.run({text("diff"), first, second});
}

QStringList differingNames(const PctRunner &runner, const QString &first, const QString &second)
{
    QStringList names;
    const QJsonObject report = runner.run({text("diff"), text("--json"), first, second}).json();
    for (const QJsonValue &difference : report.value(text("differences")).toArray())
        names.append(difference.toObject().value(text("name")).toString());
    return names;
}

} // namespace

class tst_PctDiff : public QObject
{
    Q_OBJECT

private slots:
    void equalSettingsAreTheSame();
    void eachDifferenceIsALineWithBothValues();
    void theProductIsADifference();
    void differencesAreReportedAsJson();
    void kindsOfFilesCanBeMixed();
    void signedAndUnsignedProfilesAreTheSame();
    void aProfileOfADocumentLacksWhatProfilesDoNotCarry();
    void whatIsNotSetIsTheSameInEveryForm_data();
    void whatIsNotSetIsTheSameInEveryForm();
    void whatIsSetDiffersFromWhatIsNot_data();
    void whatIsSetDiffersFromWhatIsNot();
    void aPolicyThatIsNotSetStaysSo();
    void troubleIsExitCode2_data();
    void troubleIsExitCode2();
    void outputThatIsLostIsTrouble();
};

void tst_PctDiff::equalSettingsAreTheSame()
{
    const PctRunner runner;
    const QString ribbon = runner.document(
        "PelixPDFEditor", settings("", "<RibbonUI a='1' b='2'><Tab/></RibbonUI>"), text("one.xml"));
    const QString otherText = runner.document(
        "PelixPDFEditor", settings("<!-- -->", "<RibbonUI b='2'\n a='1'> <Tab></Tab></RibbonUI>"),
        text("two.xml"));
    for (const QString &second : {ribbon, otherText}) {
        const PctResult result = compare(runner, ribbon, second);
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.out + result.err, QByteArray());
    }
}

void tst_PctDiff::eachDifferenceIsALineWithBothValues()
{
    const PctRunner runner;
    const QString first = runner.document("PelixPDFEditor", "", text("one.xml"));
    const QString second = runner.document(
        "PelixPDFEditor",
        settings(
            "<Preference Text='StartPage' Mode='0'/><Preference Text='bMIPCheckPolicyOnDocSave' Mode='1'/>"
            "<Preference Text='LoginDomainList' String='a&#10;b'/>",
            "<RibbonUI name='r'/>"),
        text("two.xml"));
    const PctResult result = compare(runner, first, second);
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(result.err, QByteArray());
    QCOMPARE(QString::fromUtf8(result.out), text("bShowStartPage: true -> false\n"
                                                 "bMIPCheckPolicySet: false -> true\n"
                                                 "nMIPCheckPolicyOnDocSave: -1 -> 1\n"
                                                 "elemRibbonCategory: none -> \"<RibbonUI name=\"r\"/>\"\n"
                                                 "strLoginDomainList: \"\" -> \"a\\nb\"\n"));
}

void tst_PctDiff::theProductIsADifference()
{
    const PctRunner runner;
    const QString first = runner.document("PelixPDFEditor", "", text("one.xml"));
    const QString second = runner.document("PelixPDFReader", "", text("two.xml"));
    const PctResult result = compare(runner, first, second);
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(result.out, QByteArray("product: \"editor\" -> \"reader\"\n"));
}

void tst_PctDiff::differencesAreReportedAsJson()
{
    const PctRunner runner;
    const QString first = runner.document("PelixPDFEditor", "", text("one.xml"));
    const QString second = runner.document(
        "PelixPDFReader", settings("<Preference Text='StartPage' Mode='0'/>"), text("two.xml"));
    const PctResult result = runner.run({text("diff"), text("--json"), first, second});
    QCOMPARE(result.exitCode, 1);
    const QJsonArray differences{
        QJsonObject{{text("name"), text("product")},
                    {text("first"), text("editor")},
                    {text("second"), text("reader")}},
        QJsonObject{{text("name"), text("bShowStartPage")}, {text("first"), true}, {text("second"), false}}};
    const QJsonObject expected{{text("same"), false},
                               {text("first"), QJsonObject{{text("file"), first},
                                                           {text("kind"), text("document")},
                                                           {text("product"), text("editor")}}},
                               {text("second"), QJsonObject{{text("file"), second},
                                                            {text("kind"), text("document")},
                                                            {text("product"), text("reader")}}},
                               {text("differences"), differences}};
    QCOMPARE(result.json(), expected);
    const PctResult same = runner.run({text("diff"), text("--json"), first, first});
    QCOMPARE(same.exitCode, 0);
    QCOMPARE(same.json().value(text("same")), QJsonValue(true));
    QCOMPARE(same.json().value(text("differences")), QJsonValue(QJsonArray()));
}

void tst_PctDiff::kindsOfFilesCanBeMixed()
{
    const PctRunner runner;
    const QString kept = runner.file(text("kept.xml"));
    const QString document =
        runner.document("PelixPDFEditor", settings("<Preference Text='StartPage' Mode='0'/>"));
    const BuildCommand build{true,
                             runner.samplePackage(true),
                             runner.file(text("out.pkg")),
                             {text("--config"), document, text("--keep-config"), kept}};
    QCOMPARE(runner.run(build.arguments()).exitCode, 0);
    const PctResult same = compare(runner, build.output, kept);
    QVERIFY2(same.exitCode == 0, QByteArray(same.out + same.err).constData());
    const PctResult different =
        compare(runner, runner.document("PelixPDFEditor", "", text("empty.xml")), build.output);
    QCOMPARE(different.exitCode, 1);
    QVERIFY2(different.out.contains("bShowStartPage: true -> false\n"), different.out.constData());
}

void tst_PctDiff::signedAndUnsignedProfilesAreTheSame()
{
    const ProfileRunner runner;
    runner.addIdentity(text("Pelix Deployment"));
    QCOMPARE(runner.makeProfile(false).exitCode, 0);
    QVERIFY(QFile::rename(runner.output(), runner.file(text("unsigned"))));
    QCOMPARE(runner.makeProfile(false, {text("--sign"), text("Pelix Deployment")}).exitCode, 0);
    const PctResult result = compare(runner, text("unsigned"), text("out.mobileconfig"));
    QVERIFY2(result.exitCode == 0, QByteArray(result.out + result.err).constData());
    QCOMPARE(result.out + result.err, QByteArray());
}

void tst_PctDiff::aProfileOfADocumentLacksWhatProfilesDoNotCarry()
{
    const ProfileRunner runner;
    const QString document = runner.document(
        "PelixPDFEditor",
        "<Profstore><Preferences><Preference Text='DefaultLaunchAttachmentPerms' "
        "DisableOpenSaveFileAttach='0'/>"
        "</Preferences><Installation_Options><Installation_Option Disable='1' Text='SetAsDefaultViewer'/>"
        "</Installation_Options></Profstore>");
    QCOMPARE(runner.makeProfile(true, {text("--config"), document}).exitCode, 0);
    const QStringList expected{text("strDisableOpenSaveFileAttach"), text("nFileAttachmentsMode"),
                               text("bSetAsDefaultViewer")};
    QCOMPARE(differingNames(runner, document, runner.output()), expected);
}

void tst_PctDiff::whatIsNotSetIsTheSameInEveryForm_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("empty ribbon") << settings("", "<RibbonUI/>");
    QTest::newRow("empty ribbon with white space") << settings("", "<RibbonUI> </RibbonUI>");
    QTest::newRow("empty quick-access bar")
        << QByteArray("<RibbonSetTabElements><QuickAccessBar></QuickAccessBar></RibbonSetTabElements>");
    for (const char *permission : {"", "Default"})
        QTest::addRow("attachments %s", permission)
            << settings(QByteArray("<Preference Text='DefaultLaunchAttachmentPerms' "
                                   "DisableOpenSaveFileAttach='") +
                        permission + "'/>");
    QTest::newRow("MIP policy") << settings("<Preference Text='bMIPCheckPolicyOnDocSave' Mode=''/>");
}

/// Against a document without a word of it, and against the profile made from either.
void tst_PctDiff::whatIsNotSetIsTheSameInEveryForm()
{
    QFETCH(QByteArray, body);
    const ProfileRunner runner;
    const QString silent = runner.document("PelixPDFEditor", "", text("silent.xml"));
    const QString document = runner.document("PelixPDFEditor", body, text("document.xml"));
    QCOMPARE(differingNames(runner, silent, document), QStringList());
    for (const QString &source : {silent, document}) {
        QCOMPARE(runner.makeProfile(true, {text("--force"), text("--config"), source}).exitCode, 0);
        QCOMPARE(differingNames(runner, document, runner.output()), QStringList());
        QCOMPARE(differingNames(runner, runner.output(), silent), QStringList());
    }
}

void tst_PctDiff::whatIsSetDiffersFromWhatIsNot_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("name");
    QTest::newRow("ribbon with a child")
        << settings("", "<RibbonUI><Category/></RibbonUI>") << text("elemRibbonCategory");
    QTest::newRow("ribbon with an attribute")
        << settings("", "<RibbonUI a=''/>") << text("elemRibbonCategory");
    QTest::newRow("ribbon with a text")
        << settings("", "<RibbonUI>a</RibbonUI>") << text("elemRibbonCategory");
    QTest::newRow("attachments") << settings("<Preference Text='DefaultLaunchAttachmentPerms' "
                                             "DisableOpenSaveFileAttach='default'/>")
                                 << text("strDisableOpenSaveFileAttach");
}

void tst_PctDiff::whatIsSetDiffersFromWhatIsNot()
{
    QFETCH(QByteArray, body);
    QFETCH(QString, name);
    const PctRunner runner;
    QCOMPARE(differingNames(runner, runner.document("PelixPDFEditor", "", text("silent.xml")),
                            runner.document("PelixPDFEditor", body, text("document.xml"))),
             QStringList{name});
}

void tst_PctDiff::aPolicyThatIsNotSetStaysSo()
{
    const ProfileRunner runner;
    QCOMPARE(runner.makeProfile(true).exitCode, 0);
    const QString first = runner.file(text("first"));
    QVERIFY(QFile::rename(runner.output(), first));
    runner.install(first);
    for (const QStringList &source : {QStringList{text("--from"), first}, {text("--installed")}}) {
        QCOMPARE(runner.makeProfile(true, QStringList{text("--force")} + source).exitCode, 0);
        const QJsonObject item =
            preferenceOf(runner.propertyList(runner.output()), text("bMIPCheckPolicyOnDocSave"));
        QCOMPARE(item.value(text("Mode")), QJsonValue(QString(QLatin1String(""))));
    }
    const QJsonObject shown = runner.run({text("show"), text("--json"), first}).json();
    const QJsonObject values = shown.value(text("settings")).toObject();
    QCOMPARE(values.value(text("bMIPCheckPolicySet")), QJsonValue(false));
    QCOMPARE(values.value(text("nMIPCheckPolicyOnDocSave")), QJsonValue(-1));
    const QString off =
        runner.document("PelixPDFEditor", settings("<Preference Text='bMIPCheckPolicyOnDocSave' Mode='0'/>"));
    const QStringList policy{text("bMIPCheckPolicySet"), text("nMIPCheckPolicyOnDocSave")};
    QCOMPARE(differingNames(runner, first, off), policy);
}

void tst_PctDiff::troubleIsExitCode2_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QByteArray>("message");
    const QString good = text("good.xml");
    QTest::newRow("first is missing") << QStringList{text("none"), good} << QByteArray("/none: ");
    QTest::newRow("second is missing") << QStringList{good, text("none")} << QByteArray("/none: ");
    QTest::newRow("second is no document") << QStringList{good, text("bad.xml")} << QByteArray("/bad.xml: ");
    QTest::newRow("second is no profile")
        << QStringList{good, text("bad.plist")} << QByteArray("/bad.plist: ");
    QTest::newRow("one file") << QStringList{good} << QByteArray("B is missing");
    QTest::newRow("no file") << QStringList() << QByteArray("A is missing");
    QTest::newRow("three files") << QStringList{good, good, good} << QByteArray("unexpected argument");
    QTest::newRow("unknown option") << QStringList{text("--brief"), good, good}
                                    << QByteArray("Unknown option");
}

void tst_PctDiff::troubleIsExitCode2()
{
    QFETCH(QStringList, files);
    QFETCH(QByteArray, message);
    const PctRunner runner;
    runner.document("PelixPDFEditor", "", text("good.xml"));
    TestFiles::write(runner.file(text("bad.xml")), "<PelixPDFEditor>");
    TestFiles::write(runner.file(text("bad.plist")), "<plist version='1.0'><dict/></plist>");
    const PctResult result = runner.run(QStringList{text("diff")} + files);
    QCOMPARE(result.exitCode, 2);
    QCOMPARE(result.out, QByteArray());
    QCOMPARE(result.messages().size(), 1);
    QVERIFY2(result.err.contains(message), result.err.constData());
}

void tst_PctDiff::outputThatIsLostIsTrouble()
{
    if (!QFileInfo::exists(text("/dev/full")))
        QSKIP("this system has no device that is always full");
    const PctRunner runner;
    const QString first = runner.document("PelixPDFEditor", "", text("one.xml"));
    const QString second = runner.document("PelixPDFReader", "", text("two.xml"));
    QProcess process;
    process.setProcessEnvironment(runner.environment());
    process.start(text("/bin/sh"), {text("-c"), text("\"$0\" diff \"$1\" \"$2\" > /dev/full"),
                                    text(PCT_EXECUTABLE), first, second});
    const PctResult result = PctRunner::waitFor(process);
    QCOMPARE(result.exitCode, 2);
    QVERIFY2(result.err.startsWith("pct: standard output: "), result.err.constData());
}

QTEST_GUILESS_MAIN(tst_PctDiff)
#include "tst_PctDiff.moc"
