// SPDX-License-Identifier: Apache-2.0
#include "profile/KeptFile.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr QFile::Permissions permissions =
    QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser | QFile::ReadGroup;

} // namespace

class tst_KeptFile : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QDir(m_folder.path()).removeRecursively();
        TestFiles::write(m_path, "kept");
        QVERIFY(QFile::setPermissions(m_path, permissions));
    }

    void whatLiesThereIsReplacedByWhatWasKept_data()
    {
        QTest::addColumn<QString>("script");
        QTest::newRow("the same") << QStringLiteral(":");
        QTest::newRow("other bytes") << QStringLiteral("echo other > \"$0\"");
        QTest::newRow("other permissions") << QStringLiteral("chmod 777 \"$0\"");
        QTest::newRow("nothing") << QStringLiteral("rm \"$0\"");
        QTest::newRow("a link") << QStringLiteral("rm \"$0\"; ln -s \"$0.target\" \"$0\"");
        QTest::newRow("a link to the bytes") << QStringLiteral("mv \"$0\" \"$0.1\"; ln -s \"$0.1\" \"$0\"");
    }

    void whatLiesThereIsReplacedByWhatWasKept()
    {
        QFETCH(QString, script);
        const KeptFile kept(m_path);
        QVERIFY(kept.isValid());
        QCOMPARE(kept.bytes(), QByteArray("kept"));
        TestFiles::write(m_path + QStringLiteral(".target"), "target");
        TestFiles::outputOf(QStringLiteral("sh"), {QStringLiteral("-c"), script, m_path});
        QVERIFY(kept.putAt(m_path));
        QCOMPARE(TestFiles::read(m_path), QByteArray("kept"));
        QCOMPARE(QFile::permissions(m_path), permissions);
        QCOMPARE(TestFiles::read(m_path + QStringLiteral(".target")), QByteArray("target"));
    }

    void aPlaceThatTakesNoFileIsTold()
    {
        const KeptFile kept(m_path);
        for (const QString &place :
             {m_folder.filePath(QStringLiteral("no/such/folder/a")), m_folder.path()}) {
            const Result<> put = kept.putAt(place);
            QVERIFY(!put);
            QVERIFY(!put.problem().text.isEmpty());
        }
    }

    void whatIsNoFileIsNotKept()
    {
        QVERIFY(!KeptFile(m_folder.path()).isValid());
        QVERIFY(!KeptFile(m_path + QStringLiteral(".none")).isValid());
        QVERIFY(!KeptFile(m_path + QStringLiteral(".none")).isAt(m_path));
    }

    void whatCouldNotBeReadIsPutNowhere()
    {
        const Result<> put = KeptFile(m_path + QStringLiteral(".none")).putAt(m_path);
        QVERIFY(!put);
        QCOMPARE(put.problem().file, m_path);
        QCOMPARE(TestFiles::read(m_path), QByteArray("kept"));
    }

    void theBytesDecideWhetherAFileIsThere()
    {
        const KeptFile kept(m_path);
        const QString other = m_folder.filePath(QStringLiteral("other"));
        QVERIFY(kept.isAt(m_path));
        QVERIFY(!kept.isAt(other));
        TestFiles::write(other, "kepT");
        QVERIFY(!kept.isAt(other));
        TestFiles::write(other, "kept");
        QVERIFY(kept.isAt(other));
    }

private:
    QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath(QStringLiteral("a.mobileconfig"));
};

QTEST_GUILESS_MAIN(tst_KeptFile)
#include "tst_KeptFile.moc"
