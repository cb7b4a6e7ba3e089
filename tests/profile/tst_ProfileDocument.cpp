// SPDX-License-Identifier: Apache-2.0
#include "profile/ProfileDocument.h"

#include "tests/config/RecordSamples.h"
#include "tests/profile/ProfileSamples.h"
#include "tests/profile/StandIns.h"

#include <QtTest>

using namespace ProfileSamples;

namespace {

const QString security = QStringLiteral("security");

/// How a signed message starts: an ASN.1 sequence of definite or indefinite length.
const QByteArray derStart("\x30\x82\x10\x00\x06", 5);
const QByteArray berStart("\x30\x80\x06\x09", 4);

} // namespace

class tst_ProfileDocument : public QObject
{
    Q_OBJECT

private slots:
    void theProductIsToldFromThePayload()
    {
        EditorXmlData data;
        bool editor = false;
        QString error;
        QString signer = QStringLiteral("left over");
        QVERIFY(readProfile(written(profileFile(editorBundle)), data, &editor, &error, &signer));
        QVERIFY(editor);
        QVERIFY(signer.isEmpty() && error.isEmpty());
        QVERIFY(readProfile(written(profileFile(readerBundle)), data, &editor, &error));
        QVERIFY(!editor);
        QVERIFY(readProfile(written(profileFile(readerBundle)), data, nullptr, nullptr));
    }

    void anOldStyleListIsRead()
    {
        EditorXmlData data;
        bool editor = false;
        QString error;
        const QByteArray list = "{ PayloadIdentifier = old.1; PayloadContent = ( { PayloadIdentifier = \"" +
                                editorBundle + "\"; } ); }";
        QVERIFY2(readProfile(written(list), data, &editor, &error), qPrintable(error));
        QCOMPARE(data.payloadInfo.PayloadIdentifier, QStringLiteral("old.1"));
    }

    void refusalsSayWhatIsWrong_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("problem");
        const QByteArray good = profileFile(editorBundle);
        QTest::newRow("empty") << QByteArray() << QStringLiteral("is no property list (it is empty)");
        QTest::newRow("text") << QByteArray("hello world") << QStringLiteral("is no property list (");
        QTest::newRow("truncated") << good.left(good.size() - 20)
                                   << QStringLiteral("is no property list (line 2, column");
        QTest::newRow("HTML") << QByteArray("<html><body/></html>")
                              << QStringLiteral("is no property list (");
        QTest::newRow("an array") << propertyList(array(QByteArray()))
                                  << QStringLiteral("is no property list (it is no dictionary)");
        QTest::newRow("no payload") << propertyList(dictionary({}))
                                    << QStringLiteral("holds no PayloadContent");
        QTest::newRow("empty payload list") << propertyList(dictionary({"PayloadContent", array("")}))
                                            << QStringLiteral("holds no PayloadContent");
        QTest::newRow("payload without identifier")
            << profileFile("") << QStringLiteral("its payload has no PayloadIdentifier");
        QTest::newRow("another application")
            << profileFile("com.example.other\nname")
            << QStringLiteral("is a profile of another application (\"com.example.other\\nname\")");
        QTest::newRow("NUL bytes") << good.left(90) + '\0' + good.mid(90)
                                   << QStringLiteral("is no property list (line");
        QTest::newRow("another encoding")
            << QByteArray(good).replace("UTF-8", "UTF-7") << QStringLiteral("is no property list (line 1");
        QTest::newRow("damaged binary") << QByteArray("bplist00") + QByteArray(100, '\xff')
                                        << QStringLiteral("is no property list (it is a damaged binary");
        QTest::newRow("too large") << good + QByteArray(33 * 1024 * 1024, ' ')
                                   << QStringLiteral("is larger than 32 MiB");
    }

    void refusalsSayWhatIsWrong()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, problem);
        EditorXmlData data = RecordSamples::everythingChanged();
        QString error;
        QVERIFY(!readProfile(written(bytes), data, nullptr, &error));
        QVERIFY2(error.startsWith(problem), qPrintable(error));
        QVERIFY2(!error.contains(QLatin1Char('\n')), qPrintable(error));
        QVERIFY(data == RecordSamples::everythingChanged());
    }

    void whatIsNoFileIsSaid()
    {
        EditorXmlData data;
        QString error;
        QVERIFY(!readProfile(m_folder.filePath(QStringLiteral("missing")), data, nullptr, &error));
        QCOMPARE(error, QStringLiteral("does not exist"));
        QVERIFY(!readProfile(m_folder.path(), data, nullptr, &error));
        QCOMPARE(error, QStringLiteral("is not a regular file"));
    }

    void aSignedProfileIsDecodedAndItsSignerNamed_data()
    {
        QTest::addColumn<QByteArray>("start");
        QTest::newRow("DER") << derStart;
        QTest::newRow("BER") << berStart;
    }

    void aSignedProfileIsDecodedAndItsSignerNamed()
    {
        QFETCH(QByteArray, start);
        StandIns commands;
        signedContent(commands, profileFile(editorBundle),
                      "SMIME: \tlevel=1.1; type=signedData; nsigners=1;\n"
                      "SMIME: \t\tsigner0.id=\"Jane Doe\"; signer0.status=GoodSignature;\n");
        EditorXmlData data;
        bool editor = false;
        QString error;
        QString signer;
        QVERIFY2(readProfile(written(start), data, &editor, &error, &signer), qPrintable(error));
        QVERIFY(editor);
        QCOMPARE(signer, QStringLiteral("Jane Doe"));
        QCOMPARE(data.payloadInfo.PayloadIdentifier, QStringLiteral("host.1"));
    }

    void aSignedProfileOfManyMebibytesIsRead()
    {
        StandIns commands;
        signedContent(commands, largeProfile(3), "");
        EditorXmlData data;
        QString error;
        QVERIFY2(readProfile(written(derStart), data, nullptr, &error), qPrintable(error));
        QCOMPARE(data.payloadInfo.PayloadIdentifier, QStringLiteral("host.1"));
    }

    void aSignedProfileThatIsTooLargeIsRefused()
    {
        StandIns commands;
        signedContent(commands, largeProfile(33), "");
        EditorXmlData data;
        QString error;
        QVERIFY(!readProfile(written(derStart), data, nullptr, &error));
        QCOMPARE(error,
                 QStringLiteral("holds a signed profile that cannot be read (/usr/bin/security printed "
                                "more than 32 MiB)"));
        QVERIFY(data == EditorXmlData());
    }

    void aSignerThatIsNotToldIsUnknown()
    {
        StandIns commands;
        signedContent(commands, profileFile(editorBundle), "");
        EditorXmlData data;
        QString signer;
        QVERIFY(readProfile(written(derStart), data, nullptr, nullptr, &signer));
        QCOMPARE(signer, QStringLiteral("unknown signer"));
    }

    void aSignedMessageThatDoesNotDecodeIsRefused()
    {
        StandIns commands;
        commands.set(security, "echo 'security: cannot decode' >&2\nexit 1\n");
        EditorXmlData data;
        QString error;
        QVERIFY(!readProfile(written(derStart), data, nullptr, &error));
        QVERIFY2(error.startsWith(QStringLiteral("is a damaged signed message (")), qPrintable(error));
        QVERIFY2(error.contains(QStringLiteral("cannot decode")), qPrintable(error));
    }

    void aSignedMessageWithOtherContentIsRefused()
    {
        StandIns commands;
        signedContent(commands, "just text", "");
        EditorXmlData data;
        QString error;
        QVERIFY(!readProfile(written(derStart), data, nullptr, &error));
        QVERIFY2(error.startsWith(QStringLiteral("is no property list (")), qPrintable(error));
        QVERIFY(data == EditorXmlData());
    }

    void theTextOfARecordReadsBack()
    {
        EditorXmlData back;
        bool editor = true;
        const QString text = profileText(RecordSamples::everythingChanged(), false);
        QVERIFY(readProfile(written(text.toUtf8()), back, &editor, nullptr));
        QVERIFY(!editor);
        QCOMPARE(back.strLoginDomainList, QStringLiteral("@example.com;@example.org"));
    }

private:
    /// With its payload behind that many mebibytes, so that none of them may be lost.
    static QByteArray largeProfile(int mebibytes)
    {
        const QByteArray filling = string(QByteArray(mebibytes * 1024 * 1024, 'x'));
        const QByteArray filled = "<dict><key>A</key>" + filling + "<key>";
        return profileFile(editorBundle).replace("<dict><key>", filled);
    }

    QString written(const QByteArray &bytes)
    {
        const QString path = m_folder.filePath(QStringLiteral("input.mobileconfig"));
        TestFiles::write(path, bytes);
        return path;
    }

    /// A command that prints the headers when asked for them with -h, else the content.
    void signedContent(StandIns &commands, const QByteArray &content, const QByteArray &headers)
    {
        commands.setOutput(security, content);
        const QString file = m_folder.filePath(QStringLiteral("headers"));
        TestFiles::write(file, headers);
        commands.set(security, "if [ \"$3\" = -h ]; then cat '" + QFile::encodeName(file) +
                                   "'; else cat \"$0.output\"; fi\n");
    }

    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(tst_ProfileDocument)
#include "tst_ProfileDocument.moc"
