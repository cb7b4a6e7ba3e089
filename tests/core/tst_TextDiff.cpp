// SPDX-License-Identifier: Apache-2.0
#include "core/TextDiff.h"

#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <ctime>
#include <limits>

namespace {

QStringList lines(const char *letters)
{
    QStringList list;
    for (; *letters; ++letters)
        list.append(QString(QLatin1Char(*letters)));
    return list;
}

QString diffOf(const QString &before, const QString &after, int context = 3)
{
    return unifiedDiff(diffLines(diffableLines(before), diffableLines(after), context), QStringLiteral("a"),
                       QStringLiteral("b"));
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

/// What the system's own program makes of the old text and the difference.
QByteArray patched(const QByteArray &before, const QString &difference)
{
    const QTemporaryDir folder;
    write(folder.filePath(QStringLiteral("text")), before);
    write(folder.filePath(QStringLiteral("difference")), difference.toUtf8());
    QProcess patch;
    patch.setWorkingDirectory(folder.path());
    patch.start(QStringLiteral("patch"),
                {QStringLiteral("--quiet"), QStringLiteral("text"), QStringLiteral("difference")});
    patch.waitForFinished(-1);
    QFile file(folder.filePath(QStringLiteral("text")));
    return patch.exitCode() == 0 && file.open(QIODevice::ReadOnly) ? file.readAll()
                                                                   : QByteArray("not patched");
}

/// A text of lines that often repeat.
QString randomText(QRandomGenerator &random, const QString &base)
{
    QStringList list = base.split(QLatin1Char('\n'));
    for (int change = 0; change < 6; ++change) {
        const auto at = random.bounded(static_cast<int>(list.size()));
        if (random.bounded(2) && list.size() > 1)
            list.removeAt(at);
        else
            list.insert(at, QString(QLatin1Char(static_cast<char>('a' + random.bounded(4)))));
    }
    return list.join(QLatin1Char('\n'));
}

/// Seconds of the processor in the cheapest of three runs.
double cheapestRun(const QStringList &before, const QStringList &after)
{
    double cheapest = std::numeric_limits<double>::max();
    for (int run = 0; run < 3; ++run) {
        const std::clock_t start = std::clock();
        const QList<DiffHunk> hunks = diffLines(before, after);
        if (!hunks.isEmpty())
            cheapest = std::min(cheapest, static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
    }
    return cheapest;
}

} // namespace

class tst_TextDiff : public QObject
{
    Q_OBJECT

private slots:
    void equalTextsHaveNoDifference()
    {
        QVERIFY(diffLines(lines("abc"), lines("abc")).isEmpty());
        QVERIFY(diffLines({}, {}).isEmpty());
        QCOMPARE(diffOf(QStringLiteral("a\n"), QStringLiteral("a\n")), QString());
    }

    void aChangedLineStandsBetweenItsNeighbours()
    {
        QCOMPARE(diffOf(QStringLiteral("a\nb\nc\nd\ne\n"), QStringLiteral("a\nb\nX\nd\ne\n"), 1),
                 QStringLiteral("--- a\n+++ b\n@@ -2,3 +2,3 @@\n b\n-c\n+X\n d\n"));
    }

    void aTextThatWasEmpty()
    {
        QCOMPARE(diffOf(QString(), QStringLiteral("a\n")),
                 QStringLiteral("--- a\n+++ b\n@@ -0,0 +1 @@\n+a\n"));
        QCOMPARE(diffOf(QStringLiteral("a\n"), QString()),
                 QStringLiteral("--- a\n+++ b\n@@ -1 +0,0 @@\n-a\n"));
    }

    void aMissingLineFeedAtTheEndIsADifference()
    {
        QCOMPARE(diffOf(QStringLiteral("a"), QStringLiteral("a\n")),
                 QStringLiteral("--- a\n+++ b\n@@ -1 +1 @@\n-a\n\\ No newline at end of file\n+a\n"));
    }

    void differencesFarApartAreHunksOfTheirOwn()
    {
        const QStringList before = lines("abcdefghijklmnop");
        QStringList after = before;
        after[1] = QStringLiteral("X");
        after[14] = QStringLiteral("Y");
        QCOMPARE(diffLines(before, after, 3).size(), 2);
        QCOMPARE(diffLines(before, after, 6).size(), 1);
    }

    void neighbouringHunksTouchButDoNotOverlap()
    {
        const QStringList before = lines("abcdefghij");
        QStringList after = before;
        after[1] = QStringLiteral("X");
        after[8] = QStringLiteral("Y");
        const QList<DiffHunk> hunks = diffLines(before, after, 3);
        QCOMPARE(hunks.size(), 1);
        QCOMPARE(hunks.first().lines.size(), 12);
    }

    void aBlockThatIsMovedInShowsAsOne()
    {
        const QString before = QStringLiteral("if a\nfi\n\nif b\nfi\n\n");
        const QString after = QStringLiteral("if a\nfi\n\nif new\nfi\n\nif b\nfi\n\n");
        const QList<DiffHunk> hunks = diffLines(diffableLines(before), diffableLines(after));
        QCOMPARE(hunks.size(), 1);
        const auto removed =
            std::count_if(hunks.first().lines.begin(), hunks.first().lines.end(),
                          [](const DiffLine &line) { return line.kind == DiffLine::Kind::Removed; });
        QCOMPARE(removed, 0);
    }

    void whatCannotBeSeenIsWrittenOut()
    {
        QCOMPARE(diffOf(QString(), QStringLiteral("a\x1b[2J\r\n")),
                 QStringLiteral("--- a\n+++ b\n@@ -0,0 +1 @@\n+a\\x1b[2J\\x0d\n"));
    }

    void thePatchProgramMakesTheNewTextOfTheOldOne()
    {
        QRandomGenerator random(7);
        for (int round = 0; round < 40; ++round) {
            const QString before =
                randomText(random, QStringLiteral("a\nb\nunique\nc\na\nb\nc\nd\nother\na\na"));
            const QString after = randomText(random, before);
            for (const int context : {0, 1, 3}) {
                if (before != after)
                    QCOMPARE(patched(before.toUtf8(), diffOf(before, after, context)), after.toUtf8());
            }
        }
    }

    void hostileTextsCostNoMoreThanTheirLength_data()
    {
        QTest::addColumn<QStringList>("before");
        QTest::addColumn<QStringList>("after");
        constexpr int count = 100 * 1000;
        QStringList ascending;
        QStringList repeated;
        QStringList alternating;
        for (int line = 0; line < count; ++line) {
            ascending.append(QString::number(line));
            repeated.append(QString::number(line % 7));
            alternating.append(QString::number(line % 5));
        }
        QStringList descending = ascending;
        std::reverse(descending.begin(), descending.end());
        QTest::newRow("in the opposite order") << ascending << descending;
        QTest::newRow("the same few lines again and again") << repeated << alternating;
        QTest::newRow("nothing in common")
            << ascending << repeated.mid(0, count).replaceInStrings(QStringLiteral("1"), QStringLiteral("x"));
    }

    void hostileTextsCostNoMoreThanTheirLength()
    {
        QFETCH(QStringList, before);
        QFETCH(QStringList, after);
        QVERIFY(cheapestRun(before, after) < 4);
    }
};

QTEST_APPLESS_MAIN(tst_TextDiff)
#include "tst_TextDiff.moc"
