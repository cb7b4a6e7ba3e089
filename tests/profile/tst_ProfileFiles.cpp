// SPDX-License-Identifier: Apache-2.0
#include "profile/CProfileGenerator.h"
#include "tests/config/RecordSamples.h"
#include "tests/profile/LogLines.h"
#include "tests/profile/ProfileSamples.h"
#include "tests/support/TestFiles.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

using namespace ProfileSamples;

class tst_ProfileFiles : public QObject
{
    Q_OBJECT

private slots:
    void init() { QVERIFY(m_folder.isValid()); }

    void aProfileIsWrittenAndSaidSo()
    {
        const QString path = m_folder.filePath(QStringLiteral("new.mobileconfig"));
        const EditorXmlData data;
        const LogLines log;
        QVERIFY(CProfileGenerator::CreateProfile(&data, path, true));
        QVERIFY(TestFiles::read(path).startsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>"));
        QVERIFY2(log.has(QStringLiteral("debug configData :")), qPrintable(log.all()));
        QVERIFY2(log.has(QStringLiteral("debug Absolute path: ") + path), qPrintable(log.all()));
        QVERIFY2(log.has(QStringLiteral("debug profile generated successfully \uFF1A") + path +
                         QStringLiteral("...")),
                 qPrintable(log.all()));
    }

    void anEmptyPathIsRefusedSilently()
    {
        const EditorXmlData data;
        const LogLines log;
        QVERIFY(!CProfileGenerator::CreateProfile(&data, QString(), true));
        QCOMPARE(log.all(), QString());
    }

    void aRecordThatCannotBeWrittenKeepsTheOldFile()
    {
        const QString path = m_folder.filePath(QStringLiteral("old.mobileconfig"));
        TestFiles::write(path, "old");
        EditorXmlData data;
        data.elemRibbonCategory =
            RecordSamples::element(QByteArray("<a>").repeated(300) + QByteArray("</a>").repeated(300));
        const LogLines log;
        QVERIFY(!CProfileGenerator::CreateProfile(&data, path, true));
        QVERIFY2(log.has(QStringLiteral("warning generateConfig failure!")), qPrintable(log.all()));
        QCOMPARE(TestFiles::read(path), QByteArray("old"));
    }

    void aPlaceThatCannotBeWrittenIsSaid()
    {
        const QString path = m_folder.filePath(QStringLiteral("no/such/folder/a.mobileconfig"));
        const EditorXmlData data;
        const LogLines log;
        QVERIFY(!CProfileGenerator::CreateProfile(&data, path, true));
        QVERIFY2(log.has(QStringLiteral("warning can not access filepath : ") + path), qPrintable(log.all()));
    }

    void aLinkIsNotWrittenThrough()
    {
        const QString target = m_folder.filePath(QStringLiteral("target"));
        const QString link = m_folder.filePath(QStringLiteral("link.mobileconfig"));
        TestFiles::write(target, "precious");
        QVERIFY(QFile::link(target, link));
        const EditorXmlData data;
        QVERIFY(!CProfileGenerator::CreateProfile(&data, link, true));
        QCOMPARE(TestFiles::read(target), QByteArray("precious"));
    }

    void withoutAPathOrRecordNothingIsRead()
    {
        EditorXmlData data;
        const LogLines log;
        QVERIFY(!CProfileGenerator::ImportProfile(QString(), &data, true));
        QVERIFY(!CProfileGenerator::ImportProfile(written(profileFile(editorBundle)), nullptr, true));
        QCOMPARE(log.all().count(QStringLiteral("warning Invalid filepath or EditorXmlData.")), 2);
    }

    void whatCannotBeOpenedIsSaid_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("missing") << m_folder.filePath(QStringLiteral("missing"));
        QTest::newRow("a folder") << m_folder.path();
        const QString pipe = m_folder.filePath(QStringLiteral("pipe"));
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        QTest::newRow("a named pipe") << pipe;
    }

    void whatCannotBeOpenedIsSaid()
    {
        QFETCH(QString, path);
        EditorXmlData data;
        const LogLines log;
        QVERIFY(!CProfileGenerator::ImportProfile(path, &data, true));
        QVERIFY2(log.has(QStringLiteral("warning Failed to open file: ") + path), qPrintable(log.all()));
    }

    void whatIsNoPropertyListLeavesTheRecord_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray good = profileFile(editorBundle);
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("text") << QByteArray("hello");
        QTest::newRow("truncated") << good.left(good.size() / 2);
        QTest::newRow("NUL in the middle") << good.left(200) + '\0' + good.mid(200);
        QTest::newRow("an array") << propertyList(array(QByteArray()));
        QTest::newRow("data as a key") << QByteArray("{ PayloadContent = ( { <0a> = x; } ); }");
        QTest::newRow("an array as a key") << QByteArray("{ (a) = b; }");
        QTest::newRow("too large") << good + QByteArray(33 * 1024 * 1024, ' ');
    }

    void whatIsNoPropertyListLeavesTheRecord()
    {
        QFETCH(QByteArray, bytes);
        EditorXmlData data = RecordSamples::everythingChanged();
        const LogLines log;
        QVERIFY(!CProfileGenerator::ImportProfile(written(bytes), &data, true));
        QVERIFY2(log.has(QStringLiteral("warning Failed to parse profile : ")), qPrintable(log.all()));
        QVERIFY(data == RecordSamples::everythingChanged());
    }

    void upToOneMebibyteOfTextIsRead()
    {
        constexpr int mebibyte = 1024 * 1024;
        const QByteArray good = profileFile(editorBundle);
        const QByteArray largest = good + QByteArray(mebibyte - good.size(), ' ');
        EditorXmlData data;
        QVERIFY(CProfileGenerator::ImportProfile(written(largest), &data, true));
        QVERIFY(CProfileGenerator::ImportProfile(written(largest + '\0' + largest), &data, true));
        EditorXmlData untouched = RecordSamples::everythingChanged();
        const LogLines log;
        QVERIFY(!CProfileGenerator::ImportProfile(written(largest + ' '), &untouched, true));
        QVERIFY2(log.has(QStringLiteral("warning Failed to parse profile : it is larger than 1 MiB")),
                 qPrintable(log.all()));
        QVERIFY(untouched == RecordSamples::everythingChanged());
    }

    void whatStandsAroundTheTextDoesNotMatter_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray good = profileFile(editorBundle);
        QTest::newRow("white space in front") << "\n \t" + good;
        QTest::newRow("a byte order mark") << "\xef\xbb\xbf" + good;
        QTest::newRow("line ends of another system") << QByteArray(good).replace('\n', "\r\n");
        QTest::newRow("a NUL and more behind") << good + QByteArray("\0<junk", 6);
        QTest::newRow("no XML declaration") << good.mid(good.indexOf("<plist"));
    }

    void whatStandsAroundTheTextDoesNotMatter()
    {
        QFETCH(QByteArray, bytes);
        EditorXmlData data;
        QVERIFY(CProfileGenerator::ImportProfile(written(bytes), &data, true));
        QCOMPARE(data.payloadInfo.PayloadIdentifier, QStringLiteral("host.1"));
    }

    void aProfileOfTheOtherProductLeavesTheRecord()
    {
        EditorXmlData data = RecordSamples::everythingChanged();
        QVERIFY(!CProfileGenerator::ImportProfile(written(profileFile(readerBundle)), &data, true));
        QVERIFY(data == RecordSamples::everythingChanged());
    }

private:
    QString written(const QByteArray &bytes)
    {
        const QString path = m_folder.filePath(QStringLiteral("input.mobileconfig"));
        TestFiles::write(path, bytes);
        return path;
    }

    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(tst_ProfileFiles)
#include "tst_ProfileFiles.moc"
