// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/PctRunner.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

namespace {

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

QStringList words(const char *line)
{
    return text(line).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

/// Runs pct through a shell, so that a test can say where its streams lead.
PctResult runInShell(const PctRunner &runner, const QString &command)
{
    QProcess process;
    process.setProcessEnvironment(runner.environment());
    process.start(text("/bin/sh"), {text("-c"), command, text(PCT_EXECUTABLE)});
    return PctRunner::waitFor(process);
}

} // namespace

class tst_PctCommandLine : public QObject
{
    Q_OBJECT

private slots:
    void helpGoesToStandardOutput_data();
    void helpGoesToStandardOutput();
    void helpOfAVerbNamesItsOptions();
    void versionIsOneLine();
    void wrongUsageIsOneLineAndExitCode2_data();
    void wrongUsageIsOneLineAndExitCode2();
    void fullStandardOutputIsAFailure();
    void aResultThatCannotBeToldIsMadeNevertheless_data();
    void aResultThatCannotBeToldIsMadeNevertheless();
    void closedStandardOutputIsAFailure();
    void aReaderThatGoesAwayIsAFailure();
    void controlCharactersInNamesAreMadeVisible();
    void namesWithLettersOfAllLanguagesWorkInTheCLocale();
    void theDebugLogIsSilentUnlessAskedFor();
};

void tst_PctCommandLine::helpGoesToStandardOutput_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("start");
    QTest::newRow("--help") << words("--help") << QByteArray("Usage: pct VERB");
    QTest::newRow("-h") << words("-h") << QByteArray("Usage: pct VERB");
    QTest::newRow("-help") << words("-help") << QByteArray("Usage: pct VERB");
    QTest::newRow("help") << words("help") << QByteArray("Usage: pct VERB");
    QTest::newRow("help help") << words("help help") << QByteArray("Usage: pct VERB");
    QTest::newRow("help check") << words("help check") << QByteArray("Usage: pct check --product");
    QTest::newRow("help build") << words("help build") << QByteArray("Usage: pct build --product");
    QTest::newRow("help show") << words("help show") << QByteArray("Usage: pct show [--json] FILE");
    QTest::newRow("help profile") << words("help profile") << QByteArray("Usage: pct profile --product");
    QTest::newRow("help diff") << words("help diff") << QByteArray("Usage: pct diff [--json] A B");
    QTest::newRow("help identities") << words("help identities")
                                     << QByteArray(
                                            "Usage: pct identities [--for profiles|packages] [--json]");
    QTest::newRow("check --help") << words("check --help") << QByteArray("Usage: pct check");
    QTest::newRow("check -help") << words("check -help") << QByteArray("Usage: pct check");
    QTest::newRow("build -h") << words("build -h") << QByteArray("Usage: pct build");
    QTest::newRow("show --help") << words("show --help") << QByteArray("Usage: pct show");
}

void tst_PctCommandLine::helpGoesToStandardOutput()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, start);
    const PctResult result = PctRunner().run(arguments);
    QCOMPARE(result.exitCode, 0);
    QVERIFY2(result.out.startsWith(start), result.out.constData());
    QVERIFY(result.out.endsWith('\n'));
    QCOMPARE(result.err, QByteArray());
}

void tst_PctCommandLine::helpOfAVerbNamesItsOptions()
{
    const QByteArray help = PctRunner().run(words("help build")).out;
    for (const auto *option :
         {"--product", "--input", "--output", "--config", "--keep-config", "--force", "--json", "--quiet"})
        QVERIFY2(help.contains(option), option);
    const QByteArray profileHelp = PctRunner().run(words("help profile")).out;
    for (const auto *option : {"--product", "--config", "--from", "--installed", "--output", "--sign",
                               "--identifier", "--uuid", "--force", "--json", "--quiet"})
        QVERIFY2(profileHelp.contains(option), option);
}

void tst_PctCommandLine::versionIsOneLine()
{
    for (const auto *option : {"--version", "-version", "-v"}) {
        const PctResult result = PctRunner().run(words(option));
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.out, QByteArrayLiteral("pct " PCT_VERSION "\n"));
    }
}

void tst_PctCommandLine::wrongUsageIsOneLineAndExitCode2_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("message");
    const auto row = [](const char *line, const char *message) {
        QTest::newRow(*line ? line : "nothing") << words(line) << QByteArray(message);
    };
    row("", "a verb is missing");
    row("frobnicate", "frobnicate: there is no such verb");
    row("--frobnicate", "there is no such verb");
    row("help frobnicate", "there is no such verb");
    row("bild", "bild: there is no such verb, the nearest is \"build\"; see \"pct help\"");
    row("checq", "the nearest is \"check\"");
    row("identites", "the nearest is \"identities\"");
    row("prof", "the nearest is \"profile\"");
    row("Show a", "the nearest is \"show\"");
    row("help dif", "the nearest is \"diff\"");
    row("--verison", "the nearest is \"--version\"");
    row("help check build", "it takes one verb");
    row("check", "--product is missing");
    row("check --product", "Missing value after '--product'");
    row("check --product viewer x.pkg", "editor or reader, not \"viewer\"");
    row("check --product Editor x.pkg", "editor or reader, not \"Editor\"");
    row("check --product editor", "PKG is missing");
    row("check --product editor a.pkg b.pkg", "unexpected argument \"b.pkg\"");
    row("check --product editor --force a.pkg", "Unknown option 'force'");
    row("build --prodcut editor --input a --output b",
        "build: Unknown option 'prodcut', the nearest is --product; see \"pct help build\"");
    row("build -prodct editor --input a --output b", "Unknown option 'prodct', the nearest is --product");
    row("build --keepconfig a", "Unknown option 'keepconfig', the nearest is --keep-config");
    row("build --conf a", "Unknown option 'conf', the nearest is --config");
    row("profile --Sign a", "Unknown option 'Sign', the nearest is --sign");
    row("show --jason a", "Unknown option 'jason', the nearest is --json");
    row("check -product viewer x.pkg", "editor or reader, not \"viewer\"");
    row("check -product editor", "PKG is missing");
    row("build --product editor --output b.pkg", "--input is missing");
    row("build --product editor --input a.pkg", "--output is missing");
    row("build --input a.pkg --output b.pkg", "--product is missing");
    row("build --product editor --input a.pkg --output b.pkg c.pkg", "unexpected argument \"c.pkg\"");
    row("build --product editor --input a.pkg --output=", "--output has an empty value");
    row("build --product editor --input a.pkg --output b.pkg --config=", "--config has an empty value");
    row("profile --product editor", "--output is missing");
    row("profile --output a", "--product is missing");
    row("profile --product editor --output a --config b --from c", "exclude each other");
    row("profile --product editor --output a --from b --installed", "exclude each other");
    row("profile --product editor --output a --config b --installed", "exclude each other");
    row("profile --product editor --output a --uuid 123", "\"123\" is no UUID");
    row("profile --product editor --output a --uuid {0A1B2C3D-4E5F-4678-9ABC-DEF012345678}", "is no UUID");
    row("profile --product editor --output a --uuid 0A1B2C3D-4E5F-4678-9ABC-DEF01234567G", "is no UUID");
    row("profile --product editor --output a --identifier a\tb",
        "neither white space nor control characters");
    row("profile --product editor --output a --sign=", "--sign has an empty value");
    row("profile --product editor --output a b", "unexpected argument \"b\"");
    row("identities a", "unexpected argument \"a\"");
    row("diff a", "B is missing");
    row("diff a b c", "unexpected argument \"c\"");
    row("show", "FILE is missing");
    row("show a b", "unexpected argument \"b\"");
    row("show --json=yes a", "Unexpected value after '--json'");
}

void tst_PctCommandLine::wrongUsageIsOneLineAndExitCode2()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, message);
    const PctResult result = PctRunner().run(arguments);
    QCOMPARE(result.exitCode, 2);
    QCOMPARE(result.out, QByteArray());
    QCOMPARE(result.messages().size(), 1);
    QVERIFY2(result.err.startsWith("pct: ") && result.err.contains(message), result.err.constData());
}

void tst_PctCommandLine::fullStandardOutputIsAFailure()
{
    if (!QFileInfo::exists(text("/dev/full")))
        QSKIP("this system has no device that is always full");
    const PctResult result = runInShell(PctRunner(), text("\"$0\" --help > /dev/full"));
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(result.messages().size(), 1);
    QVERIFY2(result.err.startsWith("pct: standard output: "), result.err.constData());
}

void tst_PctCommandLine::aResultThatCannotBeToldIsMadeNevertheless_data()
{
    QTest::addColumn<QString>("command");
    for (const QString &option : {QString(), text(" --json")}) {
        QTest::addRow("build%s", qPrintable(option)) << text("build --input in.pkg") + option;
        QTest::addRow("profile%s", qPrintable(option)) << text("profile") + option;
    }
}

void tst_PctCommandLine::aResultThatCannotBeToldIsMadeNevertheless()
{
    if (!QFileInfo::exists(text("/dev/full")))
        QSKIP("this system has no device that is always full");
    QFETCH(QString, command);
    const PctRunner runner;
    const QString made = runner.file(text("made"));
    runner.samplePackage(true, text("in.pkg"));
    const PctResult result =
        runInShell(runner, text("cd '%1'; \"$0\" %2 --product editor --output '%3' > /dev/full")
                               .arg(runner.file(QString()), command, made));
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(result.messages().last(),
             text("pct: standard output: No space left on device, but %1 was made; write to a place that has "
                  "room")
                 .arg(made));
    QVERIFY(QFileInfo(made).size() > 0);
}

void tst_PctCommandLine::closedStandardOutputIsAFailure()
{
    const PctResult result = runInShell(PctRunner(), text("\"$0\" --help >&-"));
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.err.startsWith("pct: standard output: "), result.err.constData());
}

void tst_PctCommandLine::aReaderThatGoesAwayIsAFailure()
{
    // The inner shell's streams: 3 leads to this test, standard output to a reader that has ended.
    const QString command = text("{ { sleep 1; \"$0\" --help; echo $? >&3; } | true; } 3>&1");
    const PctResult result = runInShell(PctRunner(), command);
    QCOMPARE(result.out, QByteArray("1\n"));
    QVERIFY2(result.err.startsWith("pct: standard output: "), result.err.constData());
}

void tst_PctCommandLine::controlCharactersInNamesAreMadeVisible()
{
    const PctRunner runner;
    const PctResult missing = runner.run({text("show"), text("a\nb\x1b[31m\u202ec")});
    QCOMPARE(missing.exitCode, 1);
    QCOMPARE(missing.messages().size(), 1);
    QVERIFY2(missing.err.contains("/a\\nb\\x1b[31m\\u202ec: "), missing.err.constData());
    const PctResult unexpected = runner.run({text("show"), text("a"), text("b\nc")});
    QCOMPARE(unexpected.messages().size(), 1);
    QVERIFY2(unexpected.err.contains("\"b\\nc\""), unexpected.err.constData());
}

void tst_PctCommandLine::namesWithLettersOfAllLanguagesWorkInTheCLocale()
{
    PctRunner runner;
    runner.setEnvironment(text("LC_ALL"), text("C"));
    const QString path = runner.document("PelixPDFReader", "", text("Größe 設定.xml"));
    const PctResult result = runner.run({text("show"), path});
    QVERIFY2(result.exitCode == 0, result.err.constData());
    const PctResult missing = runner.run({text("show"), text("Größe")});
    QVERIFY2(missing.err.contains("/Größe: "), missing.err.constData());
}

void tst_PctCommandLine::theDebugLogIsSilentUnlessAskedFor()
{
    PctRunner runner;
    const QString path = runner.document("PelixPDFEditor", "<RibbonSetRibbonCategory/>");
    QCOMPARE(runner.run({text("show"), path}).err, QByteArray());
    runner.setEnvironment(text("PCT_DEBUG"), text("0"));
    QCOMPARE(runner.run({text("show"), path}).err, QByteArray());
    runner.setEnvironment(text("PCT_DEBUG"), text("1"));
    QVERIFY(runner.run({text("show"), path}).err.contains("CCommon::ParseXml"));
}

QTEST_GUILESS_MAIN(tst_PctCommandLine)
#include "tst_PctCommandLine.moc"
