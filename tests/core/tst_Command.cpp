// SPDX-License-Identifier: Apache-2.0
#include "core/Command.h"

#include <QElapsedTimer>
#include <QtTest>

namespace {

QString child()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/misbehave");
}

CommandResult runChild(const QStringList &arguments, int timeout = -1)
{
    return Command::run(child(), arguments, timeout);
}

} // namespace

class tst_Command : public QObject
{
    Q_OBJECT

private slots:
    void exitCodeZeroSucceeds()
    {
        const CommandResult result = runChild({QStringLiteral("exit"), QStringLiteral("0")});
        QVERIFY(result.succeeded());
        QVERIFY(result.problem().isEmpty());
    }

    void otherExitCodesAreReported()
    {
        const CommandResult result = runChild({QStringLiteral("exit"), QStringLiteral("7")});
        QVERIFY(result.outcome == CommandResult::Outcome::Finished);
        QVERIFY(!result.succeeded());
        QCOMPARE(result.exitCode, 7);
        QVERIFY(result.problem().contains(QStringLiteral("exit code 7")));
    }

    void aMissingProgramFailsToStart()
    {
        const CommandResult result = Command::run(QStringLiteral("no-such-program-here"), {});
        QVERIFY(result.outcome == CommandResult::Outcome::FailedToStart);
        QVERIFY(result.problem().contains(QStringLiteral("no-such-program-here")));
    }

    void aKilledProgramCrashed()
    {
        const CommandResult result = runChild({QStringLiteral("crash")});
        QVERIFY(result.outcome == CommandResult::Outcome::Crashed);
        QVERIFY(!result.succeeded());
    }

    void aHangingProgramIsStoppedAfterItsTime()
    {
        QElapsedTimer timer;
        timer.start();
        const CommandResult result = runChild({QStringLiteral("hang")}, 300);
        QVERIFY(result.outcome == CommandResult::Outcome::TimedOut);
        QVERIFY(timer.elapsed() < 30000);
    }

    void floodsAreKeptToAMebibyteEach()
    {
        const CommandResult result = runChild({QStringLiteral("flood")});
        QVERIFY(result.succeeded());
        QCOMPARE(result.standardOutput.size(), 1024 * 1024);
        QCOMPARE(result.standardError.size(), 1024 * 1024);
    }

    void aLargerLimitKeepsMore()
    {
        const int flood = 32 * 1024 * 1024;
        const CommandResult whole = Command::run(child(), {QStringLiteral("flood")}, -1, flood);
        QCOMPARE(whole.standardOutput.size(), flood);
        QVERIFY(!whole.truncated);
        QCOMPARE(whole.outputProblem(), QString());
    }

    void outputThatIsCutOffIsTold()
    {
        const CommandResult cut = Command::run(child(), {QStringLiteral("flood")}, -1, 5 * 1024 * 1024);
        QVERIFY(cut.truncated && cut.succeeded());
        QCOMPARE(cut.standardOutput.size(), 5 * 1024 * 1024);
        QCOMPARE(cut.outputProblem(), child() + QStringLiteral(" printed more than 5 MiB"));
        QVERIFY(runChild({QStringLiteral("flood")}).truncated);
        QVERIFY(!runChild({QStringLiteral("arguments"), QStringLiteral("few")}).truncated);
    }

    void aFailureComesBeforeOutputThatIsCutOff()
    {
        const CommandResult failed = runChild({QStringLiteral("exit"), QStringLiteral("7")});
        QCOMPARE(failed.outputProblem(), failed.problem());
        QVERIFY(!failed.problem().isEmpty());
    }

    void theProblemQuotesTheLastLineHarmlessly()
    {
        const QString problem = runChild({QStringLiteral("complain")}).problem();
        QVERIFY2(problem.endsWith(QStringLiteral(": last\\x1b[31m line")), qPrintable(problem));
    }

    void standardInputIsEmpty() { QVERIFY(runChild({QStringLiteral("read")}, 20000).succeeded()); }

    void aCommandLineReachesTheProgramAsItsWords()
    {
        const QString path = QStringLiteral("/tmp/with blank/%1 $HOME.pkg");
        const QString line = QStringLiteral("\"%1\" arguments --go \"%2\"").arg(child(), path);
        const CommandResult result = Command::runLine(line, {path});
        QVERIFY(result.succeeded());
        QCOMPARE(result.standardOutput, QByteArray("[--go][/tmp/with blank/%1 $HOME.pkg]"));
    }

    void aPathThatBreaksItsQuotesIsRefused_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("quote and blank") << QStringLiteral("/tmp/a\" b.pkg");
        QTest::newRow("quote without blank") << QStringLiteral("/tmp/a\"b.pkg");
        QTest::newRow("three quotes") << QStringLiteral("/tmp/a\"\"\"b.pkg");
    }

    void aPathThatBreaksItsQuotesIsRefused()
    {
        QFETCH(QString, path);
        const QString line = QStringLiteral("\"%1\" arguments \"%2\"").arg(child(), path);
        QVERIFY(Command::runLine(line, {path}).outcome == CommandResult::Outcome::Refused);
    }

    void anEmptyCommandLineIsRefused()
    {
        QVERIFY(Command::runLine(QString(), {}).outcome == CommandResult::Outcome::Refused);
    }
};

QTEST_GUILESS_MAIN(tst_Command)
#include "tst_Command.moc"
