// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/BuildCommand.h"
#include "tests/cli/PctRunner.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

namespace {

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

/// What a terminal acts on: an escape, the command of one character, and the one that turns text around.
QString hostileName()
{
    return text("a\x1b[31m\u009b2J\u202eb.pkg");
}

const char *const visibleName = "a\\x1b[31m\\x9b2J\\u202eb.pkg";

bool isHarmless(const QByteArray &output)
{
    for (const char *sequence : {"\x1b", "\xc2\x9b", "\xe2\x80\xae"}) {
        if (output.contains(sequence))
            return false;
    }
    return true;
}

} // namespace

/// Control characters from files and names never reach a terminal.
class tst_PctVisibleText : public QObject
{
    Q_OBJECT

private slots:
    void thePathOfTheOutput();
    void namesInsideOfMessages();
    void json();
    void theVersionOfAPackage();
    void theDebugLog();
};

void tst_PctVisibleText::thePathOfTheOutput()
{
    const PctRunner runner;
    const BuildCommand build{true, runner.samplePackage(true), runner.file(hostileName()), {}};
    const PctResult result = runner.run(build.arguments());
    QVERIFY2(result.exitCode == 0 && isHarmless(result.out), result.out.constData());
    QCOMPARE(result.out, runner.file(text(visibleName)).toUtf8() + '\n');
    QVERIFY(QFile::exists(build.output));
}

void tst_PctVisibleText::namesInsideOfMessages()
{
    const PctRunner runner;
    const BuildCommand build{
        true, runner.samplePackage(true, hostileName()), runner.file(text("out.pkg")), {}};
    runner.replaceTool(text("pkgutil"), "[ \"$1\" = --expand ] && mkdir \"$3\"");
    const PctResult result = runner.run(build.arguments());
    QVERIFY2(result.isOneLineRefusal() && isHarmless(result.err), result.err.constData());
    QVERIFY2(result.err.count(visibleName) >= 2, result.err.constData());
}

void tst_PctVisibleText::json()
{
    const PctRunner runner;
    const BuildCommand build{true, runner.samplePackage(true), runner.file(hostileName()), {text("--json")}};
    const PctResult result = runner.run(build.arguments());
    QVERIFY2(result.exitCode == 0 && isHarmless(result.out), result.out.constData());
    QVERIFY(result.out.contains("\\u001b[31m\\u009b2J\\u202eb.pkg"));
    QCOMPARE(result.json().value(text("output")).toString(), build.output);
}

void tst_PctVisibleText::theVersionOfAPackage()
{
    const PctRunner runner;
    const QString package = runner.file(text("odd.pkg"));
    TestFiles::outputOf(
        text(PCT_MAKE_VENDOR_PACKAGE),
        {text("--product"), text("editor"), text("--change-scripts"),
         text("/bin/sed 's/version=\"13/&\u202e/' postinstall > new; cat new > postinstall; rm new"),
         text("--output"), package});
    const PctResult result = runner.run({text("check"), text("--product"), text("editor"), package});
    QCOMPARE(result.exitCode, 0);
    QVERIFY2(isHarmless(result.out + result.err), result.out.constData());
    QVERIFY2(result.out.contains("\\u202e"), result.out.constData());
}

void tst_PctVisibleText::theDebugLog()
{
    PctRunner runner;
    runner.setEnvironment(text("PCT_DEBUG"), text("1"));
    const BuildCommand build{
        true, runner.samplePackage(true, text("a\nline") + hostileName()), runner.file(text("out.pkg")), {}};
    const PctResult result = runner.run(build.arguments());
    QCOMPARE(result.exitCode, 0);
    QVERIFY2(isHarmless(result.err), result.err.constData());
    QVERIFY(result.err.contains("ExpandPkg qscmd:pkgutil --expand"));
    QVERIFY(!result.err.contains("\nline"));
    QVERIFY(result.err.contains(visibleName));
}

QTEST_GUILESS_MAIN(tst_PctVisibleText)
#include "tst_PctVisibleText.moc"
