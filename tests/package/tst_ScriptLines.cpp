// SPDX-License-Identifier: Apache-2.0
#include "package/ScriptLines.h"
#include "tests/support/TestFiles.h"

#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

namespace {

const QStringList sample = {QStringLiteral("one"), QStringLiteral("  two\t"), QStringLiteral("fi"),
                            QStringLiteral("three"), QStringLiteral("fi")};

} // namespace

class tst_ScriptLines : public QObject
{
    Q_OBJECT

private slots:
    void anAnchorThatOccursOnceIsFound() { QCOMPARE(findUniqueAnchor(sample, QStringLiteral("three")), 3); }

    void anchorsMatchIndentedOrWithTrailingBlanks()
    {
        QCOMPARE(findUniqueAnchor(sample, QStringLiteral("two")), 1);
        QCOMPARE(findUniqueAnchor(sample, QStringLiteral(" three ")), 3);
    }

    void aLineThatDiffersInsideTheTextDoesNotMatch()
    {
        QCOMPARE(findUniqueAnchor({QStringLiteral("a  b"), QStringLiteral("A b")}, QStringLiteral("a b")),
                 -1);
    }

    void aMissingAnchorIsReportedAsNotUniqueWithCountZero()
    {
        QString error;
        QCOMPARE(findUniqueAnchor(sample, QStringLiteral(" four "), &error), -1);
        QCOMPARE(error, QStringLiteral("anchor is not unique: [four], count=0"));
    }

    void aRepeatedAnchorIsReportedWithItsCount()
    {
        QString error;
        QCOMPARE(findUniqueAnchor(sample, QStringLiteral("fi"), &error), -1);
        QCOMPARE(error, QStringLiteral("anchor is not unique: [fi], count=2"));
    }

    void placeholdersInAnAnchorStayAsTheyAre()
    {
        QString error;
        findUniqueAnchor(sample, QStringLiteral("%1 %2"), &error);
        QCOMPARE(error, QStringLiteral("anchor is not unique: [%1 %2], count=0"));
        findAnchorAfter(sample, QStringLiteral("%1 %2"), 3, &error);
        QCOMPARE(error, QStringLiteral("anchor not found after line 3: [%1 %2]"));
    }

    void theFirstAnchorFromALineOnIsFound()
    {
        QCOMPARE(findAnchorAfter(sample, QStringLiteral("fi"), 0), 2);
        QCOMPARE(findAnchorAfter(sample, QStringLiteral("fi"), 2), 2);
        QCOMPARE(findAnchorAfter(sample, QStringLiteral("fi"), 3), 4);
        QCOMPARE(findAnchorAfter(sample, QStringLiteral(" two"), -5), 1);
    }

    void anAnchorThatLiesBeforeIsNotFound()
    {
        QString error;
        QCOMPARE(findAnchorAfter(sample, QStringLiteral(" one "), 1, &error), -1);
        QCOMPARE(error, QStringLiteral("anchor not found after line 1: [one]"));
        QCOMPARE(findAnchorAfter(sample, QStringLiteral("fi"), 99), -1);
    }

    void aRangeIsReplacedIncludingBothEnds()
    {
        QStringList lines = sample;
        QVERIFY(replaceLineRange(lines, 1, 3, {QStringLiteral("x"), QStringLiteral("y")}));
        QCOMPARE(lines, QStringList({QStringLiteral("one"), QStringLiteral("x"), QStringLiteral("y"),
                                     QStringLiteral("fi")}));
    }

    void anEmptyBlockDeletesTheRange()
    {
        QStringList lines = sample;
        QVERIFY(replaceLineRange(lines, 0, 4, {}));
        QCOMPARE(lines, QStringList());
    }

    void anInvalidRangeLeavesTheLinesUnchanged_data()
    {
        QTest::addColumn<int>("start");
        QTest::addColumn<int>("end");
        QTest::newRow("end before start") << 3 << 2;
        QTest::newRow("end is the number of lines") << 1 << 5;
        QTest::newRow("start before the first line") << -1 << 2;
    }

    void anInvalidRangeLeavesTheLinesUnchanged()
    {
        QFETCH(int, start);
        QFETCH(int, end);
        QStringList lines = sample;
        QString error;
        QVERIFY(!replaceLineRange(lines, start, end, {QStringLiteral("x")}, &error));
        QCOMPARE(error, QStringLiteral("invalid range: start=%1, end=%2").arg(start).arg(end));
        QCOMPARE(lines, sample);
        QVERIFY(!replaceLineRange(lines, start, end, {}));
    }

    void aUniqueLineIsReplaced()
    {
        QStringList lines = sample;
        QVERIFY(replaceUniqueLine(lines, QStringLiteral("two"), QStringLiteral("2")));
        QCOMPARE(lines.at(1), QStringLiteral("2"));
        QCOMPARE(lines.size(), sample.size());
    }

    void aLineThatIsNotUniqueIsNotReplaced()
    {
        QStringList lines = sample;
        QString error;
        QVERIFY(!replaceUniqueLine(lines, QStringLiteral("fi"), QStringLiteral("x"), &error));
        QCOMPARE(error, QStringLiteral("anchor is not unique: [fi], count=2"));
        QCOMPARE(lines, sample);
    }

    void everyLineBreakBecomesALineFeed()
    {
        QCOMPARE(normalizeNewlines(QStringLiteral("a\r\nb\rc\nd\r\r\ne")), QStringLiteral("a\nb\nc\nd\n\ne"));
    }

    void aFinalLineFeedMakesNoEmptyLine()
    {
        QCOMPARE(scriptLines(QStringLiteral("a\n\nb\n")),
                 QStringList({QStringLiteral("a"), QString(), QStringLiteral("b")}));
        QCOMPARE(scriptLines(QStringLiteral("a\n\n")), QStringList({QStringLiteral("a"), QString()}));
        QCOMPARE(scriptLines(QStringLiteral("a")), QStringList({QStringLiteral("a")}));
        QCOMPARE(scriptLines(QString()), QStringList());
    }

    void aScriptIsReadUpToTheFirstNul()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("script"));
        TestFiles::write(path, QByteArray("caf\xc3\xa9\n\0rest", 12));
        const Result<QString> text = readScript(path);
        QVERIFY(text);
        QCOMPARE(*text, QStringLiteral("caf\u00e9\n"));
    }

    void aMissingScriptIsReportedWithTheFilesErrorString()
    {
        const Result<QString> text = readScript(QStringLiteral("/no/such/script"));
        QVERIFY(!text);
        QFile file(QStringLiteral("/no/such/script"));
        QVERIFY(!file.open(QIODevice::ReadOnly));
        QCOMPARE(text.problem().text, file.errorString());
    }

    void whatIsNoRegularFileIsNotRead()
    {
        const QTemporaryDir folder;
        const QString pipe = folder.filePath(QStringLiteral("pipe"));
        const QString link = folder.filePath(QStringLiteral("link"));
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        TestFiles::write(folder.filePath(QStringLiteral("script")), "text");
        QVERIFY(QFile::link(folder.filePath(QStringLiteral("script")), link));
        for (const QString &path : {pipe, folder.path()}) {
            const Result<QString> text = readScript(path);
            QVERIFY(!text);
            QCOMPARE(text.problem().text, QStringLiteral("is not a regular file"));
        }
        const Result<QString> linked = readScript(link);
        QVERIFY(!linked);
        QCOMPARE(linked.problem().text, QStringLiteral("is a link"));
    }

    void aScriptOfMoreThan16MebibytesIsRefused()
    {
        const QTemporaryDir folder;
        QFile huge(folder.filePath(QStringLiteral("script")));
        QVERIFY(huge.open(QIODevice::WriteOnly) && huge.resize(16 * 1024 * 1024 + 1));
        const Result<QString> text = readScript(huge.fileName());
        QVERIFY(!text);
        QCOMPARE(text.problem().text, QStringLiteral("is too large for a script"));
    }
};

QTEST_GUILESS_MAIN(tst_ScriptLines)
#include "tst_ScriptLines.moc"
