// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"
#include "cli/description/Descriptions.h"
#include "cli/Verbs.h"
#include "tests/cli/SampleVerbs.h"

#include <QtTest>

namespace {

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

struct Run
{
    int exitCode = -1;
    QString out;
    QString err;
};

Run run(const char *line)
{
    Run result;
    QTextStream out(&result.out);
    QTextStream err(&result.err);
    Console console(out, err);
    result.exitCode = runPct(sampleVerbs(), text(line).split(QLatin1Char(' '), Qt::SkipEmptyParts), console);
    out.flush();
    err.flush();
    return result;
}

QString part(const char *words)
{
    return text("<!-- made by manual-update: %1 -->\nold\n<!-- end of what manual-update makes -->\n")
        .arg(text(words));
}

} // namespace

class tst_Verbs : public QObject
{
    Q_OBJECT

private slots:
    void aLineReachesItsVerb_data();
    void aLineReachesItsVerb();
    void wrongUsageNamesTheVerbAndItsHelp_data();
    void wrongUsageNamesTheVerbAndItsHelp();
    void helpBeginsWithTheSynopsis_data();
    void helpBeginsWithTheSynopsis();
    void helpOfAGroupListsItsVerbs();
    void noLineOfHelpIsWiderThanATerminal();
    void theManualGetsItsPartsAndKeepsTheRest();
    void aManualThatLacksAPartIsRefused_data();
    void aManualThatLacksAPartIsRefused();
};

void tst_Verbs::aLineReachesItsVerb_data()
{
    QTest::addColumn<QString>("out");
    const auto row = [](const char *line, const char *out) { QTest::newRow(line) << text(out); };
    row("config new --set a=1 --set b=2", "set=a=1,b=2\n\n");
    row("config get doc", "doc\n");
    row("config get doc one two", "doc,one,two\n");
    row("pick --one a", "one=a\n\n");
    row("pick --two", "two=\n\n");
    row("lint a b c", "a,b,c\n");
}

void tst_Verbs::aLineReachesItsVerb()
{
    QFETCH(QString, out);
    const Run result = run(QTest::currentDataTag());
    QCOMPARE(result.err, QString());
    QCOMPARE(result.out, out);
    QCOMPARE(result.exitCode, 0);
}

void tst_Verbs::wrongUsageNamesTheVerbAndItsHelp_data()
{
    QTest::addColumn<QString>("message");
    const auto row = [](const char *line, const char *message) { QTest::newRow(line) << text(message); };
    row("config", "config: a verb is missing; see \"pct help config\"");
    row("config gte", "config gte: there is no such verb, the nearest is \"get\"; see \"pct help config\"");
    row("get", "get: there is no such verb; see \"pct help\"");
    row("help config frobnicate", "config frobnicate: there is no such verb; see \"pct help config\"");
    row("help config get doc", "help: it takes one verb; see \"pct help\"");
    row("config get", "config get: DOC is missing; see \"pct help config get\"");
    row("config new", "config new: --set is missing; see \"pct help config new\"");
    row("config new --set a --output b --output c",
        "config new: --output is given more than once; see \"pct help config new\"");
    row("config new --ste a",
        "config new: Unknown option 'ste', the nearest is --set; see \"pct help config new\"");
    row("pick", "pick: --one or --two is missing; see \"pct help pick\"");
    row("pick --one a --two", "pick: --one and --two exclude each other; see \"pct help pick\"");
    row("pick --one c", "pick: --one is a or b, not \"c\"; see \"pct help pick\"");
    row("lint", "lint: FILE is missing; see \"pct help lint\"");
}

void tst_Verbs::wrongUsageNamesTheVerbAndItsHelp()
{
    QFETCH(QString, message);
    const Run result = run(QTest::currentDataTag());
    QCOMPARE(result.err, text("pct: %1\n").arg(message));
    QCOMPARE(result.out, QString());
    QCOMPARE(result.exitCode, 2);
}

void tst_Verbs::helpBeginsWithTheSynopsis_data()
{
    QTest::addColumn<QString>("start");
    const auto row = [](const char *line, const char *start) { QTest::newRow(line) << text(start); };
    row("help config new", "Usage: pct config new --set NAME=VALUE... [--output DOC]\n");
    row("config new --help", "Usage: pct config new --set NAME=VALUE... [--output DOC]\n");
    row("help config get", "Usage: pct config get DOC [NAME...]\n");
    row("help pick", "Usage: pct pick (--one a|b | --two)\n");
    row("help lint", "Usage: pct lint FILE...\n");
}

void tst_Verbs::helpBeginsWithTheSynopsis()
{
    QFETCH(QString, start);
    const Run result = run(QTest::currentDataTag());
    QVERIFY2(result.out.startsWith(start), qPrintable(result.out));
    QCOMPARE(result.exitCode, 0);
}

void tst_Verbs::helpOfAGroupListsItsVerbs()
{
    const QString help = run("help config").out;
    QVERIFY2(help.startsWith(text("Usage: pct config VERB [options]\n")), qPrintable(help));
    QVERIFY2(help.contains(text("\nVerbs:\n  new  make a document\n  get  print settings\n")),
             qPrintable(help));
    for (const auto *line : {"config --help", "config -h", "config -help"})
        QCOMPARE(run(line).out, help);
    const QString general = run("help").out;
    QVERIFY2(general.contains(text("  config  work on documents\n")), qPrintable(general));
    QVERIFY2(!general.contains(text("make a document")), qPrintable(general));
}

void tst_Verbs::noLineOfHelpIsWiderThanATerminal()
{
    for (const Verb &verb : pctVerbs()) {
        QString help;
        QTextStream out(&help);
        Console console(out, out);
        QCOMPARE(runPct(pctVerbs(), {text("help"), verb.name}, console), 0);
        for (const QString &line : help.split(QLatin1Char('\n')))
            QVERIFY2(line.size() < 80, qPrintable(line));
    }
}

void tst_Verbs::theManualGetsItsPartsAndKeepsTheRest()
{
    const QString page = text("# Title\n") + part("pct") + part("pct config new") + text("prose\n") +
                         part("pct config get") + part("pct pick") + part("pct lint");
    const Result<QString> result = manualPage(sampleVerbs(), page);
    QVERIFY(result);
    const QString &made = *result;
    QVERIFY2(made.contains(text("<!-- made by manual-update: pct config new -->\n\n"
                                "```\npct config new --set NAME=VALUE... [--output DOC]\n```\n\n"
                                "Makes a document; see `pct lint`.\n\n"
                                "| Option | Meaning |\n| --- | --- |\n"
                                "| `--set` | a setting and its value |\n"
                                "| `--output` | the document's file [new: or old] |\n\n"
                                "<!-- end of what manual-update makes -->\nprose\n")),
             qPrintable(made));
    QVERIFY(made.startsWith(text("# Title\n")));
    QVERIFY(!made.contains(text("old\n")));
    QCOMPARE(*manualPage(sampleVerbs(), made), made);
}

void tst_Verbs::aManualThatLacksAPartIsRefused_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("expected");
    const QString most = part("pct") + part("pct config new") + part("pct config get") + part("pct pick");
    QTest::newRow("missing") << most << text("a part for \"pct lint\" is missing");
    QTest::newRow("unknown")
        << most + part("pct lint") + part("pct frobnicate")
        << text("a part is about \"pct frobnicate\", which is no verb or has a part already");
    QTest::newRow("twice") << most + part("pct pick")
                           << text("a part is about \"pct pick\", which is no verb or has a part already");
    QTest::newRow("open") << most + text("<!-- made by manual-update: pct lint -->\n")
                          << text("a part has no end");
}

void tst_Verbs::aManualThatLacksAPartIsRefused()
{
    QFETCH(QString, page);
    QFETCH(QString, expected);
    const Result<QString> result = manualPage(sampleVerbs(), page);
    QVERIFY(!result);
    QCOMPARE(result.problem().text, expected);
}

QTEST_GUILESS_MAIN(tst_Verbs)
#include "tst_Verbs.moc"
