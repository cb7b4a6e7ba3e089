// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/BuildCommand.h"
#include "tests/cli/PctRunner.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QRegularExpression>
#include <QtTest>

namespace {

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

PctResult check(const PctRunner &runner, const QString &package)
{
    return runner.run({text("check"), text("--product"), text("editor"), package});
}

PctResult build(const PctRunner &runner, const QString &package)
{
    return runner.run(BuildCommand{true, package, runner.file(text("out.pkg")), {}}.arguments());
}

/// Each run has a folder of its own.
QString withoutFolderNames(const QByteArray &message)
{
    return QString::fromUtf8(message).replace(QRegularExpression(text("/pct-\\w{6}/")), text("/pct/"));
}

/// Both refuse, with the same one message and without a result.
void compareRefusals(const PctRunner &runner, const QString &package, const QByteArray &message)
{
    const QStringList before = runner.files();
    const PctResult checked = check(runner, package);
    const PctResult built = build(runner, package);
    QVERIFY2(checked.exitCode == 1 && checked.messages().size() == 1, checked.err.constData());
    QVERIFY2(built.isOneLineRefusal(), built.err.constData());
    QCOMPARE(withoutFolderNames(checked.err), withoutFolderNames(built.err));
    QVERIFY2(built.err.contains(message), built.err.constData());
    QCOMPARE(runner.files(), before);
    QCOMPARE(runner.temporaryLeftovers(), QStringList());
}

/// A command that makes a script of so many kibibytes out of the one that is there.
QByteArray padded(const char *script, int kibibytes)
{
    return QStringLiteral("head -c %1 /dev/zero | tr '\\0' '#' >> %2")
        .arg(kibibytes * 1024)
        .arg(text(script))
        .toUtf8();
}

} // namespace

/// `pct check` says beforehand what `pct build` with default settings would say.
class tst_PctVerdicts : public QObject
{
    Q_OBJECT

private slots:
    void whatABuildRefusesIsRefusedByTheCheck_data();
    void whatABuildRefusesIsRefusedByTheCheck();
    void whatABuildAcceptsIsAcceptedByTheCheck_data();
    void whatABuildAcceptsIsAcceptedByTheCheck();
    void ofHostilePackagesOnlyDamageInThePayloadPassesTheCheck();
    void aDefaultViewerToolIsInTheWayOnlyWhenOneIsAdded();
    void placesAndVariablesThatABuildRefusesAreRefused();
};

void tst_PctVerdicts::whatABuildRefusesIsRefusedByTheCheck_data()
{
    QTest::addColumn<QByteArray>("change");
    QTest::addColumn<QByteArray>("message");
    const auto row = [](const char *name, const QByteArray &change, const char *message) {
        QTest::newRow(name) << change << QByteArray(message);
    };
    row("preinstall is a link", "ln -sf legacy-plugins.txt preinstall", "its preinstall is a link;");
    row("preinstall is a folder", "rm preinstall; mkdir preinstall", "its preinstall is a folder;");
    row("postinstall is missing", "rm postinstall", "it has no postinstall script");
    row("postinstall is a link", "ln -sf preinstall postinstall", "its postinstall is a link;");
    row("postinstall is a dangling link", "ln -sf nothing postinstall", "its postinstall is a link;");
    row("postinstall is a folder", "rm postinstall; mkdir postinstall", "its postinstall is a folder;");
    row("postinstall is too large", padded("postinstall", 16 * 1024),
        "its postinstall cannot be read: is too large for a script;");
    row("duti", "echo > duti", "holds a \"duti\" in its scripts already");
    row("duti is a folder", "mkdir duti", "holds a \"duti\" in its scripts already");
    row("duti is a dangling link", "ln -s nowhere duti", "holds a \"duti\" in its scripts already");
    row("document", "echo > ProfStore.xml", "was customized before");
    row("document is a folder", "mkdir ProfStore.xml", "was customized before");
    row("document is a dangling link", "ln -s nowhere ProfStore.xml", "was customized before");
    row("pipe among the scripts", "mkfifo pipe", "neither a file nor a folder nor a link");
}

void tst_PctVerdicts::whatABuildRefusesIsRefusedByTheCheck()
{
    QFETCH(QByteArray, change);
    QFETCH(QByteArray, message);
    const PctRunner runner;
    compareRefusals(runner, runner.changedPackage(true, QString::fromUtf8(change)), message);
}

void tst_PctVerdicts::whatABuildAcceptsIsAcceptedByTheCheck_data()
{
    QTest::addColumn<QByteArray>("change");
    QTest::newRow("nothing changed") << QByteArray(":");
    QTest::newRow("no preinstall") << QByteArray("rm preinstall");
    QTest::newRow("large preinstall") << padded("preinstall", 16 * 1024);
    QTest::newRow("postinstall at the limit") << QByteArray("n=$(wc -c < postinstall); "
                                                            "head -c $((16 * 1024 * 1024 - n)) /dev/zero | "
                                                            "tr '\\0' '#' >> postinstall");
    QTest::newRow("empty postinstall") << QByteArray(": > postinstall");
    QTest::newRow("further files") << QByteArray("mkdir tools; echo > tools/duti; ln -s tools/duti link");
}

void tst_PctVerdicts::whatABuildAcceptsIsAcceptedByTheCheck()
{
    QFETCH(QByteArray, change);
    const PctRunner runner;
    const QString package = runner.changedPackage(true, QString::fromUtf8(change));
    const PctResult checked = check(runner, package);
    const PctResult built = build(runner, package);
    QVERIFY2(checked.exitCode == 0, checked.err.constData());
    QVERIFY2(built.exitCode == 0, built.err.constData());
    QVERIFY(QFile::exists(runner.file(text("out.pkg"))));
}

/// The hostile packages of the stand-ins' tests, as installers of the Editor.
void tst_PctVerdicts::ofHostilePackagesOnlyDamageInThePayloadPassesTheCheck()
{
    const PctRunner runner;
    const QString maker = runner.file(text("maker.py"));
    TestFiles::write(maker, TestFiles::read(text(PCT_MAKE_XAR_VARIANT))
                                .replace("Sample Product", "Pelix PDF Editor")
                                .replace("Sample.pkg", "Pelix_PDF_Editor.pkg"));
    const QDir packages(runner.file(text("packages")));
    QVERIFY(QDir().mkpath(packages.path()));
    TestFiles::outputOf(text("/usr/bin/python3"), {maker, text("--all"), text("hostile"), packages.path()});
    QStringList passed;
    for (const QString &name : packages.entryList(QDir::Files)) {
        if (check(runner, packages.filePath(name)).exitCode != 0)
            continue;
        QVERIFY2(build(runner, packages.filePath(name)).isOneLineRefusal(), qPrintable(name));
        passed.append(name);
    }
    const QStringList damagedPayload{text("size-lies-larger"),    text("size-lies-smaller"),
                                     text("stream-cut"),          text("stream-garbage"),
                                     text("wrong-archived"),      text("wrong-extracted"),
                                     text("wrong-extracted-gzip")};
    QCOMPARE(passed, damagedPayload);
}

void tst_PctVerdicts::aDefaultViewerToolIsInTheWayOnlyWhenOneIsAdded()
{
    const PctRunner runner;
    const QString settings = runner.document(
        "PelixPDFEditor", "<Installation_Options><Installation_Option Text='SetAsDefaultViewer' Disable='1'/>"
                          "</Installation_Options>");
    const BuildCommand command{true,
                               runner.changedPackage(true, text("echo theirs > duti")),
                               runner.file(text("out.pkg")),
                               {text("--config"), settings}};
    const PctResult built = runner.run(command.arguments());
    QVERIFY2(built.exitCode == 0, built.err.constData());
    QCOMPARE(ExpandedPackage(command.output).script(text("duti")), QByteArray("theirs\n"));
}

void tst_PctVerdicts::placesAndVariablesThatABuildRefusesAreRefused()
{
    PctRunner runner;
    const QString package = runner.samplePackage(true);
    const QString quoted = runner.samplePackage(true, text("a\"b.pkg"));
    compareRefusals(runner, quoted, "a\"b.pkg: holds a double quote");
    runner.setEnvironment(text("SOURCE_DATE_EPOCH"), text("yesterday"));
    compareRefusals(runner, package, "pct: SOURCE_DATE_EPOCH: \"yesterday\" is not a whole number");
    runner.setEnvironment(text("SOURCE_DATE_EPOCH"), text("1500000000"));
    const QString temporary = runner.file(text("a\"b"));
    QVERIFY(QDir().mkdir(temporary));
    runner.setEnvironment(text("TMPDIR"), temporary);
    compareRefusals(runner, package, "holds a double quote");
}

QTEST_GUILESS_MAIN(tst_PctVerdicts)
#include "tst_PctVerdicts.moc"
