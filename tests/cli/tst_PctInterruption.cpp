// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/BuildCommand.h"
#include "tests/cli/PctRunner.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

#include <csignal>
#include <sys/types.h>

namespace {

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

/// A tool that hangs in one of its uses, half-way through its work, and says that it does so by writing its
/// process number into the file that HANGING names.
void makeHang(const PctRunner &runner, const QString &tool, const QByteArray &firstArgument)
{
    const QByteArray condition =
        firstArgument.isEmpty() ? QByteArray("true") : QByteArray("[ \"$1\" = " + firstArgument + " ]");
    runner.replaceTool(tool, condition + " || exec \"$real\" \"$@\"\n"
                                         "[ \"$1\" != --flatten ] || printf 'xar!' > \"$3\"\n"
                                         "[ \"$1\" != --expand ] || mkdir \"$3\"\n"
                                         "echo $$ > \"$HANGING.new\"; mv \"$HANGING.new\" \"$HANGING\"\n"
                                         "exec sleep 300\n");
}

/// What has ended may stay in the table of processes: in a container often nobody collects it.
bool isRunning(pid_t process)
{
    QProcess ps;
    ps.start(text("ps"), {text("-o"), text("stat="), text("-p"), QString::number(process)});
    ps.waitForFinished(-1);
    const QByteArray state = ps.readAllStandardOutput().trimmed();
    return !state.isEmpty() && !state.startsWith('Z');
}

/// One build that hangs, with an output and a kept document that exist already.
class HangingBuild
{
public:
    HangingBuild(const QString &tool, const QByteArray &firstArgument)
    {
        m_runner.setEnvironment(text("HANGING"), m_hangingFile.filePath(text("pid")));
        m_build = {true,
                   m_runner.samplePackage(true),
                   m_runner.file(text("out.pkg")),
                   {text("--force"), text("--keep-config"), m_runner.file(text("kept.xml"))}};
        TestFiles::write(m_build.output, "as it was");
        TestFiles::write(m_runner.file(text("kept.xml")), "as it was");
        makeHang(m_runner, tool, firstArgument);
    }

    ~HangingBuild() { endTool(); }

    const PctRunner &runner() const { return m_runner; }
    const BuildCommand &command() const { return m_build; }

    void addOption(const QString &option) { m_build.more.append(option); }
    void start() { m_runner.start(m_process, m_build.arguments()); }

    /// The hanging tool's process, once it is there.
    bool waitUntilItHangs()
    {
        const QString path = m_hangingFile.filePath(text("pid"));
        if (!QTest::qWaitFor([&path] { return QFile::exists(path); }, 60000))
            return false;
        m_tool = TestFiles::read(path).trimmed().toInt();
        return m_tool > 0 && isRunning(m_tool);
    }

    PctResult endBy(int signal)
    {
        ::kill(static_cast<pid_t>(m_process.processId()), signal);
        return PctRunner::waitFor(m_process);
    }

    bool toolHasEnded() const
    {
        return QTest::qWaitFor([this] { return !isRunning(m_tool); }, 20000);
    }

    bool filesAreAsTheyWere() const
    {
        return TestFiles::read(m_build.output) == "as it was" &&
               TestFiles::read(m_runner.file(text("kept.xml"))) == "as it was";
    }

    void endTool()
    {
        if (m_tool > 0 && isRunning(m_tool))
            ::kill(m_tool, SIGKILL);
        m_tool = 0;
    }

private:
    PctRunner m_runner;
    QTemporaryDir m_hangingFile;
    BuildCommand m_build;
    QProcess m_process;
    pid_t m_tool = 0;
};

void addMoments()
{
    QTest::addColumn<QString>("tool");
    QTest::addColumn<QByteArray>("firstArgument");
    QTest::newRow("while the product is looked up") << text("installer") << QByteArray();
    QTest::newRow("while the contents are listed") << text("xar") << QByteArray();
    QTest::newRow("while the scripts are unpacked") << text("ditto") << QByteArray();
    QTest::newRow("while the package is expanded") << text("pkgutil") << QByteArray("--expand");
    QTest::newRow("while a script is edited") << text("sed") << QByteArray("-i");
    QTest::newRow("while the package is flattened") << text("pkgutil") << QByteArray("--flatten");
}

} // namespace

/// A build that is ended from outside, at every step that takes time.
class tst_PctInterruption : public QObject
{
    Q_OBJECT

private slots:
    void terminationCleansUp_data() { addMoments(); }
    void terminationCleansUp();
    void everyEndingSignalCleansUp_data();
    void everyEndingSignalCleansUp();
    void aToolThatIgnoresTerminationIsKilled();
    void theJsonSaysTheSameAsTheMessage();
    void workThatGoesOnIsEnded_data();
    void workThatGoesOnIsEnded();
    void aSignalThatTheStarterIgnoresStaysIgnored();
    void killingLeavesNoHalfOutputAndTheNextRunWorks_data() { addMoments(); }
    void killingLeavesNoHalfOutputAndTheNextRunWorks();
};

void tst_PctInterruption::terminationCleansUp()
{
    QFETCH(QString, tool);
    QFETCH(QByteArray, firstArgument);
    HangingBuild build(tool, firstArgument);
    build.start();
    QVERIFY(build.waitUntilItHangs());
    const PctResult result = build.endBy(SIGTERM);
    QCOMPARE(result.status, QProcess::CrashExit);
    QCOMPARE(result.exitCode, SIGTERM);
    QCOMPARE(result.messages().size(), 1);
    QVERIFY2(result.err.endsWith(": interrupted; run it again\n"), result.err.constData());
    QVERIFY(build.toolHasEnded());
    QVERIFY(build.filesAreAsTheyWere());
    QCOMPARE(build.runner().files().size(), 3);
    QCOMPARE(build.runner().temporaryLeftovers(), QStringList());
}

void tst_PctInterruption::everyEndingSignalCleansUp_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGHUP") << SIGHUP;
}

void tst_PctInterruption::everyEndingSignalCleansUp()
{
    QFETCH(int, signal);
    HangingBuild build(text("pkgutil"), "--flatten");
    build.start();
    QVERIFY(build.waitUntilItHangs());
    const PctResult result = build.endBy(signal);
    QCOMPARE(result.status, QProcess::CrashExit);
    QCOMPARE(result.exitCode, signal);
    QVERIFY(build.filesAreAsTheyWere());
    QCOMPARE(build.runner().temporaryLeftovers(), QStringList());
}

void tst_PctInterruption::aToolThatIgnoresTerminationIsKilled()
{
    HangingBuild build(text("pkgutil"), "--expand");
    build.runner().replaceTool(text("pkgutil"),
                               "trap '' TERM; echo $$ > \"$HANGING.new\"\n"
                               "mv \"$HANGING.new\" \"$HANGING\"; while :; do sleep 1; done\n");
    build.start();
    QVERIFY(build.waitUntilItHangs());
    QCOMPARE(build.endBy(SIGTERM).exitCode, SIGTERM);
    QVERIFY(build.toolHasEnded());
    QCOMPARE(build.runner().temporaryLeftovers(), QStringList());
}

void tst_PctInterruption::theJsonSaysTheSameAsTheMessage()
{
    HangingBuild build(text("pkgutil"), "--expand");
    build.addOption(text("--json"));
    build.start();
    QVERIFY(build.waitUntilItHangs());
    const PctResult result = build.endBy(SIGTERM);
    const QJsonObject problem = result.json().value(text("problem")).toObject();
    QCOMPARE(problem.value(text("text")).toString(), text("interrupted; run it again"));
    QCOMPARE(result.messages(), QStringList{text("pct: %1: %2")
                                                .arg(problem.value(text("file")).toString(),
                                                     problem.value(text("text")).toString())});
}

void tst_PctInterruption::workThatGoesOnIsEnded_data()
{
    QTest::addColumn<QString>("verb");
    QTest::addColumn<int>("signal");
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        QTest::addRow("of pct itself, signal %d", signal) << text("profile") << signal;
        QTest::addRow("of a child, signal %d", signal) << text("build") << signal;
    }
}

/// The work computes and never looks up.
void tst_PctInterruption::workThatGoesOnIsEnded()
{
    if (QSysInfo::kernelType() == QLatin1String("darwin"))
        QSKIP("nothing can be preloaded into a program here");
    QFETCH(QString, verb);
    QFETCH(int, signal);
    PctRunner runner;
    runner.withEndlessCall(text("fsync"));
    QStringList arguments{verb, text("--product"), text("editor"), text("--output"),
                          runner.file(text("out"))};
    if (verb == text("build"))
        arguments += QStringList{text("--input"), runner.samplePackage(true)};
    const QStringList before = runner.files();
    QProcess process;
    runner.start(process, arguments);
    QVERIFY(QTest::qWaitFor([&runner] { return runner.isBusy(); }, 60000));
    ::kill(static_cast<pid_t>(process.processId()), signal);
    const PctResult result = PctRunner::waitFor(process);
    QCOMPARE(result.status, QProcess::CrashExit);
    QCOMPARE(result.exitCode, signal);
    QVERIFY2(result.err.endsWith(": interrupted; run it again\n"), result.err.constData());
    QCOMPARE(result.messages().size(), 1);
    QCOMPARE(runner.files(), before);
    QCOMPARE(runner.temporaryLeftovers(), QStringList());
}

void tst_PctInterruption::aSignalThatTheStarterIgnoresStaysIgnored()
{
    const PctRunner runner;
    runner.replaceTool(text("installer"), "kill -HUP \"$PCT_PID\"; exec \"$real\" \"$@\"");
    const QString command = text("trap '' HUP; PCT_PID=$$ exec \"$0\" check --product editor \"$1\"");
    QProcess shell;
    shell.setProcessEnvironment(runner.environment());
    shell.start(text("/bin/sh"), {text("-c"), command, text(PCT_EXECUTABLE), runner.samplePackage(true)});
    const PctResult result = PctRunner::waitFor(shell);
    QVERIFY2(result.exitCode == 0 && result.out.contains("13.1.2"), result.err.constData());
}

void tst_PctInterruption::killingLeavesNoHalfOutputAndTheNextRunWorks()
{
    QFETCH(QString, tool);
    QFETCH(QByteArray, firstArgument);
    HangingBuild build(tool, firstArgument);
    build.start();
    QVERIFY(build.waitUntilItHangs());
    const PctResult killed = build.endBy(SIGKILL);
    QCOMPARE(killed.exitCode, SIGKILL);
    build.endTool();
    QVERIFY(build.filesAreAsTheyWere());

    build.runner().restoreTool(tool);
    const PctResult again = build.runner().run(build.command().arguments());
    QVERIFY2(again.exitCode == 0, again.err.constData());
    QCOMPARE(ExpandedPackage(build.command().output).setting(text("name(/*)")), QByteArray("PelixPDFEditor"));
}

QTEST_GUILESS_MAIN(tst_PctInterruption)
#include "tst_PctInterruption.moc"
