// SPDX-License-Identifier: Apache-2.0
#include "core/FileDigest.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

/// Digests of files, against another program's.
class tst_FileDigest : public QObject
{
    Q_OBJECT

private slots:
    void isThatOfAnotherProgram_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("a line") << QByteArray("a line\n");
        QTest::newRow("more than is read at a time") << QByteArray(3 * 1024 * 1024 + 1, 'x');
    }

    void isThatOfAnotherProgram()
    {
        QFETCH(QByteArray, bytes);
        TestFiles::write(m_path, bytes);
        const QString script =
            QStringLiteral("import hashlib, sys\n"
                           "print(hashlib.sha256(open(sys.argv[1], 'rb').read()).hexdigest())");
        const QByteArray known =
            TestFiles::outputOf(QStringLiteral("/usr/bin/python3"), {QStringLiteral("-c"), script, m_path});
        const Result<QByteArray> digest = sha256OfFile(m_path);
        QVERIFY(digest);
        QCOMPARE(*digest, known.trimmed());
    }

    void whatCannotBeReadIsTold()
    {
        for (const QString &path : {m_folder.path(), m_folder.filePath(QStringLiteral("missing"))}) {
            const Result<QByteArray> digest = sha256OfFile(path);
            QVERIFY(!digest);
            QCOMPARE(digest.problem().file, path);
        }
    }

private:
    QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath(QStringLiteral("file"));
};

QTEST_GUILESS_MAIN(tst_FileDigest)
#include "tst_FileDigest.moc"
