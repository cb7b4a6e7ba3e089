// SPDX-License-Identifier: Apache-2.0
#include "package/ReplacedDocument.h"
#include "tests/package/BuildFixture.h"
#include "tests/support/ProblemText.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

#include <climits>

class tst_ReplacedDocument : public QObject, private BuildFixture
{
    Q_OBJECT

private slots:
    void init()
    {
        setUp();
        m_document = at("out/kept.xml");
    }
    void cleanup() { tearDown(); }

    void theOldDocumentComesBackUnlessItIsForgotten()
    {
        TestFiles::write(m_document, "old");
        {
            ReplacedDocument replaced;
            QCOMPARE(problemText(replaced.layAside(m_document)), QString());
            QCOMPARE(entriesOf("out").size(), 2);
            QVERIFY(QFile::remove(m_document));
            TestFiles::write(m_document, "new");
        }
        QCOMPARE(TestFiles::read(m_document), QByteArray("old"));
        {
            ReplacedDocument replaced;
            QVERIFY(replaced.layAside(m_document));
            QVERIFY(QFile::remove(m_document));
            TestFiles::write(m_document, "new");
            replaced.forget();
        }
        QCOMPARE(TestFiles::read(m_document), QByteArray("new"));
        QCOMPARE(entriesOf("out"), QStringList(QStringLiteral("kept.xml")));
    }

    void withoutAnOldDocumentTheNewOneStays()
    {
        {
            ReplacedDocument replaced;
            QCOMPARE(problemText(replaced.layAside(m_document)), QString());
            QCOMPARE(entriesOf("out"), QStringList());
            TestFiles::write(m_document, "new");
        }
        QCOMPARE(TestFiles::read(m_document), QByteArray("new"));
    }

    void aDocumentThatCannotBeLaidAsideFailsTheBuild()
    {
        m_plan.documentPath = inAFolderThatTakesNoOther();
        TestFiles::write(m_plan.documentPath, "from before");
        QVERIFY(!builds());
        QCOMPARE(m_report.failedStep, QStringLiteral("add the configuration document"));
        QVERIFY2(
            m_report.problem.startsWith(m_plan.documentPath + QStringLiteral(": cannot write beside it: ")),
            qPrintable(m_report.problem));
        QCOMPARE(TestFiles::read(m_plan.documentPath), QByteArray("from before"));
        QCOMPARE(entriesOf("out").size(), 1);
    }

private:
    /// The path is so long that a name of a few more letters is too long, for every user.
    QString inAFolderThatTakesNoOther() const
    {
        constexpr int longestPath = PATH_MAX - 1;
        QString path = at("out");
        while (path.size() < longestPath - 220)
            path += QLatin1Char('/') + QString(200, QLatin1Char('d'));
        path += QLatin1Char('/') + QString(longestPath - 10 - path.size(), QLatin1Char('d'));
        return path + QStringLiteral("/kept.xml");
    }

    QString m_document;
};

QTEST_GUILESS_MAIN(tst_ReplacedDocument)
#include "tst_ReplacedDocument.moc"
