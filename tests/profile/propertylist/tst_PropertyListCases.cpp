// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ProblemText.h"
#include "tests/support/PropertyListCases.h"

#include "profile/CProfileGenerator.h"
#include "profile/ReadProfile.h"
#include "tests/config/RecordSamples.h"
#include "tests/profile/LogLines.h"
#include "tests/support/TestFiles.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

const QString notParsed = QStringLiteral("warning Failed to parse profile : ");

} // namespace

/// What is a property list and what is a damaged one, for files as the window and as `pct` reads them.
class tst_PropertyListCases : public QObject
{
    Q_OBJECT

private slots:
    void anXmlListIsReadOrRefused_data() { PropertyListCases::addRows(PropertyListCases::xml()); }

    void anXmlListIsReadOrRefused() { verifyFile(); }

    void aBinaryListIsReadOrRefused_data() { PropertyListCases::addRows(PropertyListCases::binary()); }

    void aBinaryListIsReadOrRefused() { verifyFile(); }

    void anOldStyleListIsReadOrRefused_data() { PropertyListCases::addRows(PropertyListCases::oldStyle()); }

    void anOldStyleListIsReadOrRefused() { verifyFile(); }

    void theWindowReadsOrRefusesAList_data()
    {
        PropertyListCases::addRows(PropertyListCases::xml() + PropertyListCases::oldStyle());
    }

    void theWindowReadsOrRefusesAList()
    {
        QFETCH(QByteArray, profile);
        QFETCH(bool, isRead);
        QFETCH(QString, domains);
        QFETCH(bool, isUtf8);
        if (!isUtf8)
            return;
        TestFiles::write(m_path, profile);
        EditorXmlData data = RecordSamples::everythingChanged();
        const LogLines log;
        QCOMPARE(CProfileGenerator::ImportProfile(m_path, &data, true), isRead);
        QCOMPARE(log.has(notParsed), !isRead);
        if (isRead)
            QCOMPARE(data.strLoginDomainList, domains);
        else
            QVERIFY(data == RecordSamples::everythingChanged());
    }

    void theWindowSaysThatABinaryListIsOne_data()
    {
        QTest::addColumn<QByteArray>("profile");
        QTest::newRow("good") << PropertyListCases::binaryProfileWith(QByteArray("\x51x"));
        QTest::newRow("damaged") << QByteArray("bplist00");
    }

    void theWindowSaysThatABinaryListIsOne()
    {
        QFETCH(QByteArray, profile);
        TestFiles::write(m_path, profile);
        EditorXmlData data;
        const LogLines log;
        QVERIFY(!CProfileGenerator::ImportProfile(m_path, &data, true));
        QVERIFY2(log.has(notParsed + QStringLiteral("it is a binary property list")), qPrintable(log.all()));
        QVERIFY(!log.all().contains(QStringLiteral("damaged")));
        QVERIFY(data == EditorXmlData());
    }

private:
    void verifyFile()
    {
        QFETCH(QByteArray, profile);
        QFETCH(bool, isRead);
        QFETCH(QString, domains);
        TestFiles::write(m_path, profile);
        EditorXmlData data = RecordSamples::everythingChanged();
        const QString error = problemText(readProfile(m_path, data));
        QVERIFY2(error.isEmpty() == isRead && !error.contains(QLatin1Char('\n')), qPrintable(error));
        if (isRead)
            QCOMPARE(data.strLoginDomainList, domains);
        else
            QVERIFY(data == RecordSamples::everythingChanged());
    }

    QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath(QStringLiteral("a.mobileconfig"));
};

QTEST_GUILESS_MAIN(tst_PropertyListCases)
#include "tst_PropertyListCases.moc"
