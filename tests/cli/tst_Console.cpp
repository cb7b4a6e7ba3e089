// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"
#include "cli/Interruption.h"

#include <QtTest>

#include <csignal>

namespace {

const Problem problem{QStringLiteral("a.pkg"), QStringLiteral("is no package")};

/// What a console writes to its two streams.
struct Streams
{
    QString outText;
    QString errText;
    QTextStream out{&outText};
    QTextStream err{&errText};

    QString messages()
    {
        err.flush();
        return errText;
    }
};

} // namespace

class tst_Console : public QObject
{
    Q_OBJECT

private slots:
    void aQuietConsoleLeavesAnotherAsItIs();
    void onlyARunThatCanBeInterruptedTellsOfIt();
    void whatIsToldOfAFailureStaysTheSame();
    void anInterruptionIsToldOnce();
};

void tst_Console::aQuietConsoleLeavesAnotherAsItIs()
{
    Streams quietStreams;
    Streams streams;
    Console quiet(quietStreams.out, quietStreams.err);
    Console console(streams.out, streams.err);
    quiet.setQuiet(true);
    for (Console *each : {&quiet, &console}) {
        each->warning(problem.file, problem.text);
        each->error(problem);
    }
    QCOMPARE(quietStreams.messages(), QStringLiteral("pct: a.pkg: is no package\n"));
    QCOMPARE(streams.messages(),
             QStringLiteral("pct: a.pkg: warning: is no package\npct: a.pkg: is no package\n"));
}

void tst_Console::onlyARunThatCanBeInterruptedTellsOfIt()
{
    Streams streams;
    Interruption interruption(QStringLiteral("build"));
    Console interrupted(streams.out, streams.err, &interruption);
    Console console(streams.out, streams.err);
    std::raise(SIGTERM);
    QCOMPARE(console.told(problem).text, problem.text);
    QCOMPARE(interrupted.told(problem).file, problem.file);
    QCOMPARE(interrupted.told(problem).text, QStringLiteral("interrupted; run it again"));
    QCOMPARE(interrupted.told(Result<>(problem)).problem().text, QStringLiteral("interrupted; run it again"));
    QVERIFY(interrupted.told(Result<>()));
}

void tst_Console::whatIsToldOfAFailureStaysTheSame()
{
    Streams streams;
    Interruption interruption(QStringLiteral("build"));
    Console console(streams.out, streams.err);
    const QString first = console.told(problem).text;
    std::raise(SIGTERM);
    console.error(problem);
    QCOMPARE(streams.messages(), QStringLiteral("pct: a.pkg: %1\n").arg(first));
}

void tst_Console::anInterruptionIsToldOnce()
{
    Streams streams;
    Interruption interruption(QStringLiteral("build"));
    Console console(streams.out, streams.err, &interruption);
    std::raise(SIGTERM);
    console.error(problem);
    console.error(problem);
    QCOMPARE(streams.messages(), QStringLiteral("pct: a.pkg: interrupted; run it again\n"));
}

QTEST_GUILESS_MAIN(tst_Console)
#include "tst_Console.moc"
