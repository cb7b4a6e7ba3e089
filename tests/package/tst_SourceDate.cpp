// SPDX-License-Identifier: Apache-2.0
#include "package/SourceDate.h"
#include "tests/support/TestFiles.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

void setTime(const QString &path, time_t seconds)
{
    const timespec times[] = {{seconds, 0}, {seconds, 0}};
    QCOMPARE(::utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, AT_SYMLINK_NOFOLLOW), 0);
}

/// Of a link itself.
qint64 timeOf(const QString &path)
{
    struct stat status = {};
    return ::lstat(QFile::encodeName(path).constData(), &status) == 0 ? qint64(status.st_mtime) : -1;
}

} // namespace

class tst_SourceDate : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { qunsetenv("SOURCE_DATE_EPOCH"); }

    void withoutTheVariableThereIsNoDate()
    {
        qunsetenv("SOURCE_DATE_EPOCH");
        const Result<std::optional<qint64>> read = SourceDate::read();
        QVERIFY(read);
        QVERIFY(!read->has_value());
    }

    void wholeSecondsUpToNowAreADate_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<qint64>("seconds");
        QTest::newRow("the first") << QByteArray("0") << qint64(0);
        QTest::newRow("in 2001") << QByteArray("1000000000") << qint64(1000000000);
        QTest::newRow("zeros in front") << QByteArray("0012") << qint64(12);
    }

    void wholeSecondsUpToNowAreADate()
    {
        QFETCH(QByteArray, value);
        qputenv("SOURCE_DATE_EPOCH", value);
        const Result<std::optional<qint64>> read = SourceDate::read();
        QVERIFY(read && read->has_value());
        QTEST(**read, "seconds");
    }

    void everythingElseIsRefused_data()
    {
        QTest::addColumn<QByteArray>("value");
        for (const char *value :
             {"", "-1", "+1", " 1", "1 ", "1.5", "0x1", "now", "32503680000", "99999999999999999999"})
            QTest::newRow(value) << QByteArray(value);
    }

    void everythingElseIsRefused()
    {
        QFETCH(QByteArray, value);
        qputenv("SOURCE_DATE_EPOCH", value);
        const Result<std::optional<qint64>> read = SourceDate::read();
        QVERIFY(!read);
        QCOMPARE(read.problem().text,
                 QStringLiteral("\"%1\" is not a whole number of seconds from 1970 up to now; "
                                "correct or unset the variable")
                     .arg(QString::fromLatin1(value)));
    }

    void whatIsNewerIsOfThatTimeAndWhatIsOlderStays()
    {
        const QTemporaryDir folder;
        const QString older = folder.filePath(QStringLiteral("older"));
        const QString newer = folder.filePath(QStringLiteral("below/.newer"));
        const QString target = folder.filePath(QStringLiteral("target"));
        const QString link = folder.filePath(QStringLiteral("below/link"));
        for (const QString &file : {older, newer, target})
            TestFiles::write(file, "x");
        QVERIFY(QFile::link(target, link));
        setTime(older, 1000);
        setTime(newer, 3000);
        setTime(target, 1500);
        setTime(link, 3000);
        QVERIFY(SourceDate::limitTimesBelow(folder.path(), 2000));
        QCOMPARE(timeOf(older), qint64(1000));
        QCOMPARE(timeOf(newer), qint64(2000));
        QCOMPARE(timeOf(target), qint64(1500));
        QCOMPARE(timeOf(link), qint64(2000));
        QCOMPARE(timeOf(folder.filePath(QStringLiteral("below"))), qint64(2000));
    }
};

QTEST_GUILESS_MAIN(tst_SourceDate)
#include "tst_SourceDate.moc"
