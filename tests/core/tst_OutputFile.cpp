// SPDX-License-Identifier: Apache-2.0
#include "core/OutputFile.h"
#include "tests/core/OddFiles.h"

#include <QtTest>

#include <sys/stat.h>

using Existing = OutputFile::Existing;

class tst_OutputFile : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_files = std::make_unique<OddFiles>();
        QVERIFY(m_files->isComplete());
        m_before = names();
    }

    void aFreeNameIsTaken()
    {
        for (const Existing existing : {Existing::Keep, Existing::Replace}) {
            const QString path = at(existing == Existing::Keep ? "one" : "two");
            QVERIFY(OutputFile(path, existing).write("new"));
            QCOMPARE(TestFiles::read(path), QByteArray("new"));
        }
        QCOMPARE(names().size(), m_before.size() + 2);
    }

    void aFileIsReplacedOnlyWhenThatIsWanted()
    {
        OutputFile kept(at("file"), Existing::Keep);
        const Result<> refused = kept.write("new");
        QVERIFY(!refused && kept.isTaken());
        QVERIFY2(refused.problem().text.startsWith(QStringLiteral("exists already")),
                 qPrintable(refused.problem().text));
        QCOMPARE(TestFiles::read(at("file")), QByteArray("old"));

        QVERIFY(OutputFile(at("file"), Existing::Replace).write("new"));
        QCOMPARE(TestFiles::read(at("file")), QByteArray("new"));
    }

    void nothingButAFileIsEverReplaced_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("replaces");
        for (const auto *name : {"link", "dangling", "pipe", "folder"}) {
            QTest::addRow("%s, replacing", name) << QString::fromLatin1(name) << true;
            QTest::addRow("%s, keeping", name) << QString::fromLatin1(name) << false;
        }
    }

    void nothingButAFileIsEverReplaced()
    {
        QFETCH(QString, name);
        QFETCH(bool, replaces);
        {
            OutputFile output(m_files->filePath(name), replaces ? Existing::Replace : Existing::Keep);
            const Result<> refused = output.write("new");
            QVERIFY(!refused);
            QVERIFY(!refused.problem().text.isEmpty());
        }
        QCOMPARE(TestFiles::read(at("file")), QByteArray("old"));
        QCOMPARE(names(), m_before);
    }

    void permissionsOfTheReplacedFileStay()
    {
        QCOMPARE(::chmod(QFile::encodeName(at("file")).constData(), 0604), 0);
        QVERIFY(OutputFile(at("file"), Existing::Replace).write("new"));
        struct stat status = {};
        QCOMPARE(::stat(QFile::encodeName(at("file")).constData(), &status), 0);
        QCOMPARE(int(status.st_mode & 07777), 0604);
    }

    void whatWasNotMadeIsNotPlaced()
    {
        OutputFile output(at("new"), Existing::Replace);
        QVERIFY(output.stage());
        QVERIFY(!output.isStaged());
        const Result<> refused = output.place();
        QVERIFY(!refused);
        QVERIFY(!refused.problem().text.isEmpty());
        TestFiles::write(output.stagedPath(), "made");
        QVERIFY(output.isStaged());
        QVERIFY(output.place());
        QCOMPARE(TestFiles::read(at("new")), QByteArray("made"));
    }

    void aLinkThatWasStagedIsNotPlaced()
    {
        OutputFile output(at("new"), Existing::Replace);
        QVERIFY(output.stage());
        QVERIFY(QFile::link(at("file"), output.stagedPath()));
        QVERIFY(!output.isStaged());
        QVERIFY(!output.place());
        QVERIFY(!QFileInfo::exists(at("new")));
    }

    void aMissingFolderSaysWhy()
    {
        const Result<> refused = OutputFile(at("no/such/file"), Existing::Keep).write("new");
        QVERIFY(!refused);
        QCOMPARE(refused.problem().file, at("no/such/file"));
        QVERIFY(!refused.problem().text.isEmpty());
    }

private:
    QString at(const char *name) const { return m_files->at(name); }

    QStringList names() const
    {
        return QDir(m_files->path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    std::unique_ptr<OddFiles> m_files;
    QStringList m_before;
};

QTEST_GUILESS_MAIN(tst_OutputFile)
#include "tst_OutputFile.moc"
