// SPDX-License-Identifier: Apache-2.0
#include "core/SafeFile.h"
#include "tests/core/OddFiles.h"

#include <QtTest>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>

class tst_SafeFile : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_files = std::make_unique<OddFiles>();
        QVERIFY(m_files->isComplete());
    }

    void kindsAreOfThePathItself()
    {
        QVERIFY(SafeFile::kindOf(at("file")) == SafeFile::Kind::File);
        QVERIFY(SafeFile::kindOf(at("link")) == SafeFile::Kind::Link);
        QVERIFY(SafeFile::kindOf(at("dangling")) == SafeFile::Kind::Link);
        QVERIFY(SafeFile::kindOf(at("pipe")) == SafeFile::Kind::Other);
        QVERIFY(SafeFile::kindOf(m_files->path()) == SafeFile::Kind::Folder);
        QVERIFY(SafeFile::kindOf(at("missing")) == SafeFile::Kind::Missing);
        QVERIFY(SafeFile::kindOf(at("file/below")) == SafeFile::Kind::Missing);
    }

    void linksLeadToTheSameFile()
    {
        QVERIFY(SafeFile::sameFile(at("file"), at("link")));
        QVERIFY(!SafeFile::sameFile(at("file"), at("missing")));
        QVERIFY(!SafeFile::sameFile(at("missing"), at("missing")));
    }

    void copyingNeverReplacesAnything_data()
    {
        QTest::addColumn<QString>("target");
        QTest::newRow("file") << QStringLiteral("file");
        QTest::newRow("link") << QStringLiteral("link");
        QTest::newRow("dangling link") << QStringLiteral("dangling");
        QTest::newRow("pipe") << QStringLiteral("pipe");
    }

    void copyingNeverReplacesAnything()
    {
        QFETCH(QString, target);
        TestFiles::write(at("new"), "new");
        const Result<> refused = SafeFile::copyNew(at("new"), m_files->filePath(target));
        QVERIFY(!refused);
        QCOMPARE(refused.problem().text, QStringLiteral("exists already"));
        QCOMPARE(TestFiles::read(at("file")), QByteArray("old"));
        QVERIFY(!QFileInfo::exists(at("nowhere")));
    }

    void copyingMakesAnEqualFile()
    {
        QVERIFY(SafeFile::copyNew(at("file"), at("copy")));
        QCOMPARE(TestFiles::read(at("copy")), QByteArray("old"));
    }

    void copyingKeepsPermissions()
    {
        const auto permissions = QFile::ReadOwner | QFile::ExeOwner;
        QVERIFY(QFile::setPermissions(at("file"), permissions));
        QVERIFY(SafeFile::copyNew(at("file"), at("copy"), SafeFile::Lasting::No));
        QCOMPARE(TestFiles::read(at("copy")), QByteArray("old"));
        QCOMPARE(QFile::permissions(at("copy")) & 0x7000, QFile::Permissions(permissions) & 0x7000);
    }

    void copyingWhatCannotBeReadSaysWhyAndLeavesNothing()
    {
        for (const QString &unreadable : {m_files->path(), at("nowhere")}) {
            const Result<> refused = SafeFile::copyNew(unreadable, at("copy"));
            QVERIFY(!refused);
            QCOMPARE(refused.problem().file, unreadable);
            QVERIFY(!refused.problem().text.isEmpty());
        }
        QVERIFY(!QFileInfo::exists(at("copy")));
    }

    void replacingContentsRefusesLinksAndPipes_data()
    {
        QTest::addColumn<QString>("target");
        QTest::newRow("link") << QStringLiteral("link");
        QTest::newRow("dangling link") << QStringLiteral("dangling");
        QTest::newRow("pipe") << QStringLiteral("pipe");
        QTest::newRow("folder") << QStringLiteral(".");
    }

    void replacingContentsRefusesLinksAndPipes()
    {
        QFETCH(QString, target);
        const Result<> refused = SafeFile::replaceContents(m_files->filePath(target), "new");
        QVERIFY(!refused);
        QVERIFY(!refused.problem().text.isEmpty());
        QCOMPARE(TestFiles::read(at("file")), QByteArray("old"));
        QVERIFY(!QFileInfo::exists(at("nowhere")));
    }

    void replacingContentsKeepsPermissions()
    {
        const auto permissions = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
        QVERIFY(QFile::setPermissions(at("file"), permissions));
        QVERIFY(SafeFile::replaceContents(at("file"), "new"));
        QCOMPARE(TestFiles::read(at("file")), QByteArray("new"));
        QCOMPARE(QFile::permissions(at("file")) & 0x7000, QFile::Permissions(permissions) & 0x7000);
    }

    void replacingContentsInAMissingFolderSaysWhy()
    {
        const Result<> refused = SafeFile::replaceContents(at("no/such/file"), "new");
        QVERIFY(!refused);
        QVERIFY(!refused.problem().text.isEmpty());
    }

    void whatCannotBeReadToItsEndIsNoContent()
    {
        // Its first page is mapped by nobody, so that it opens and cannot be read.
        const QString memory = QStringLiteral("/proc/self/mem");
        if (!QFileInfo::exists(memory))
            QSKIP("this system has no file that opens and cannot be read");
        const Result<QByteArray> contents = SafeFile::readContents(memory);
        QVERIFY(!contents);
        QVERIFY(!contents.problem().text.isEmpty());
    }

    void contentsAreReadWhole()
    {
        const Result<QByteArray> contents = SafeFile::readContents(at("file"));
        QVERIFY(contents);
        QCOMPARE(*contents, QByteArray("old"));
        QVERIFY(!SafeFile::readContents(at("nowhere")));
    }

    void replacingContentsThatFailsLeavesAllAsItWas()
    {
        const QStringList before = QDir(m_files->path()).entryList(QDir::AllEntries | QDir::Hidden);
        rlimit limit = {};
        QCOMPARE(getrlimit(RLIMIT_FSIZE, &limit), 0);
        const rlimit nothing = {0, limit.rlim_max};
        const auto handler = std::signal(SIGXFSZ, SIG_IGN);
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &nothing), 0);
        const Result<> replaced = SafeFile::replaceContents(at("file"), "new");
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &limit), 0);
        std::signal(SIGXFSZ, handler);
        QVERIFY(!replaced);
        QVERIFY(!replaced.problem().text.isEmpty());
        QCOMPARE(TestFiles::read(at("file")), QByteArray("old"));
        QCOMPARE(QDir(m_files->path()).entryList(QDir::AllEntries | QDir::Hidden), before);
    }

private:
    QString at(const char *name) const { return m_files->at(name); }

    std::unique_ptr<OddFiles> m_files;
};

QTEST_GUILESS_MAIN(tst_SafeFile)
#include "tst_SafeFile.moc"
