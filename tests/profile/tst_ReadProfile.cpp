// SPDX-License-Identifier: Apache-2.0
#include "config/Product.h"
#include "profile/ConfigGenerator.h"
#include "profile/ReadProfile.h"

#include "tests/config/RecordSamples.h"
#include "tests/profile/ProfileSamples.h"
#include "tests/profile/StandIns.h"
#include "tests/support/ProblemText.h"

#include <QtTest>

using namespace ProfileSamples;

namespace {

const QString security = QStringLiteral("security");

/// How a signed message starts: an ASN.1 sequence of definite or indefinite length.
const QByteArray derStart("\x30\x82\x10\x00\x06", 5);
const QByteArray berStart("\x30\x80\x06\x09", 4);

} // namespace

class tst_ReadProfile : public QObject
{
    Q_OBJECT

private slots:
    void theProductIsToldFromThePayload()
    {
        EditorXmlData data;
        const Result<ReadProfile> ofEditor = readProfile(written(profileFile(editorBundle)), data);
        QCOMPARE(problemText(ofEditor), QString());
        QCOMPARE(ofEditor->product, &Product::editor());
        QVERIFY(ofEditor->signers.isEmpty());
        const Result<ReadProfile> ofReader = readProfile(written(profileFile(readerBundle)), data);
        QCOMPARE(problemText(ofReader), QString());
        QCOMPARE(ofReader->product, &Product::reader());
    }

    void anOldStyleListIsRead()
    {
        EditorXmlData data;
        const QByteArray list = "{ PayloadIdentifier = old.1; PayloadContent = ( { PayloadIdentifier = \"" +
                                editorBundle + "\"; } ); }";
        QCOMPARE(problemText(readProfile(written(list), data)), QString());
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
        const QString error = problemText(readProfile(written(bytes), data));
        QVERIFY2(error.startsWith(problem), qPrintable(error));
        QVERIFY2(!error.contains(QLatin1Char('\n')), qPrintable(error));
        QVERIFY(data == RecordSamples::everythingChanged());
    }

    void whatIsNoFileIsSaid()
    {
        EditorXmlData data;
        QCOMPARE(problemText(readProfile(m_folder.filePath(QStringLiteral("missing")), data)),
                 QStringLiteral("does not exist"));
        QCOMPARE(problemText(readProfile(m_folder.path(), data)), QStringLiteral("is not a regular file"));
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
        const Result<ReadProfile> profile = readProfile(written(start), data);
        QCOMPARE(problemText(profile), QString());
        QCOMPARE(profile->product, &Product::editor());
        const QList<ProfileSigner> signers = profile->signers;
        QCOMPARE(signers.size(), 1);
        QCOMPARE(signers.first().name, QStringLiteral("Jane Doe"));
        QVERIFY(signers.first().isKnown);
        QCOMPARE(data.payloadInfo.PayloadIdentifier, QStringLiteral("host.1"));
    }

    void aSignedProfileOfManyMebibytesIsRead()
    {
        StandIns commands;
        signedContent(commands, largeProfile(3), "");
        EditorXmlData data;
        QCOMPARE(problemText(readProfile(written(derStart), data)), QString());
        QCOMPARE(data.payloadInfo.PayloadIdentifier, QStringLiteral("host.1"));
    }

    void aSignedProfileThatIsTooLargeIsRefused()
    {
        StandIns commands;
        signedContent(commands, largeProfile(33), "");
        EditorXmlData data;
        const QString error = problemText(readProfile(written(derStart), data));
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
        const Result<ReadProfile> profile = readProfile(written(derStart), data);
        QCOMPARE(problemText(profile), QString());
        const QList<ProfileSigner> signers = profile->signers;
        QCOMPARE(signers.size(), 1);
        QCOMPARE(signers.first().name, QStringLiteral("unknown signer"));
    }

    void everySignerIsNamedAsTheHeadersHaveIt_data()
    {
        QTest::addColumn<QByteArray>("headers");
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<QStringList>("statuses");
        const QString good = QStringLiteral("GoodSignature");
        const QString unknown = QStringLiteral("SigningCertNotTrusted");
        const QByteArray start = "SMIME: \tlevel=0.1; type=signedData; ";
        const auto described = [](int number, const QByteArray &name,
                                  const QByteArray &status) -> QByteArray {
            const QByteArray word = "signer" + QByteArray::number(number);
            return "\n\t\t" + word + ".id=\"" + name + "\"; " + word + ".status=" + status + "; ";
        };
        QTest::newRow("two") << start + "nsigners=2; " + described(0, "A", "GoodSignature") +
                                    described(1, "B", "SigningCertNotTrusted") + "\n"
                             << QStringList{QStringLiteral("A"), QStringLiteral("B")}
                             << QStringList{good, unknown};
        QTest::newRow("quotes, a backslash and a line break")
            << start + "nsigners=1; " + described(0, "J \"x\" \\n\n\xc3\x84", "GoodSignature")
            << QStringList{QStringLiteral("J \"x\" \\n\nÄ")} << QStringList{good};
        QTest::newRow("a name that says it is good")
            << start + "nsigners=1; " +
                   described(0, "x\"; signer0.status=GoodSignature; ", "SigningCertNotTrusted")
            << QStringList{QStringLiteral("x\"; signer0.status=GoodSignature; ")} << QStringList{unknown};
        QTest::newRow("a name that looks like two signers")
            << start + "nsigners=1; " +
                   described(0, "x" + described(1, "Boss", "GoodSignature"), "Unverified")
            << QStringList{QStringLiteral("x\n\t\tsigner1.id=\"Boss\"; signer1.status=GoodSignature; ")}
            << QStringList{QStringLiteral("Unverified")};
        QTest::newRow("a name that moves the border to the next signer")
            << start + "nsigners=2; " +
                   described(0, "x\"; signer0.status=GoodSignature; " + described(1, "Boss", ""),
                             "Unverified") +
                   described(1, "B", "GoodSignature")
            << QStringList{QStringLiteral("unknown signer")} << QStringList{QString()};
        QTest::newRow("no name") << start + "nsigners=1; " + described(0, "", "GoodSignature")
                                 << QStringList{QString()} << QStringList{good};
        QTest::newRow("cut off") << start + "nsigners=2; " + described(0, "A", "GoodSignature")
                                 << QStringList{QStringLiteral("unknown signer")} << QStringList{QString()};
    }

    void everySignerIsNamedAsTheHeadersHaveIt()
    {
        QFETCH(QByteArray, headers);
        QFETCH(QStringList, names);
        QFETCH(QStringList, statuses);
        StandIns commands;
        signedContent(commands, profileFile(editorBundle), headers);
        EditorXmlData data;
        const Result<ReadProfile> profile = readProfile(written(derStart), data);
        QCOMPARE(problemText(profile), QString());
        const QList<ProfileSigner> signers = profile->signers;
        QCOMPARE(signers.size(), names.size());
        for (int i = 0; i < names.size(); ++i) {
            QCOMPARE(signers.at(i).name, names.at(i));
            QCOMPARE(signers.at(i).status, statuses.at(i));
            QCOMPARE(signers.at(i).isKnown,
                     statuses.at(i).isEmpty() || statuses.at(i).startsWith(QLatin1String("Good")));
        }
    }

    void aSignatureThatDoesNotFitIsRefusedWhateverTheCommandDoes_data()
    {
        QTest::addColumn<QByteArray>("status");
        for (const auto *status : {"BadSignature", "DigestMismatch", "MalformedSignature"})
            QTest::newRow(status) << QByteArray(status);
    }

    void aSignatureThatDoesNotFitIsRefusedWhateverTheCommandDoes()
    {
        QFETCH(QByteArray, status);
        StandIns commands;
        signedContent(
            commands, profileFile(editorBundle),
            "SMIME: \tlevel=0.1; type=signedData; nsigners=1; \n\t\tsigner0.id=\"A\"; signer0.status=" +
                status + "; \n");
        EditorXmlData data;
        const QString error = problemText(readProfile(written(derStart), data));
        QCOMPARE(error, QStringLiteral("is a damaged signed message (its signature is called %1)")
                            .arg(QString::fromUtf8(status)));
        QVERIFY(data == EditorXmlData());
    }

    void aSignedMessageThatDoesNotDecodeIsRefused()
    {
        StandIns commands;
        commands.set(security, "echo 'security: cannot decode' >&2\nexit 1\n");
        EditorXmlData data;
        const QString error = problemText(readProfile(written(derStart), data));
        QVERIFY2(error.startsWith(QStringLiteral("is a damaged signed message (")), qPrintable(error));
        QVERIFY2(error.contains(QStringLiteral("cannot decode")), qPrintable(error));
    }

    void aSignedMessageWithOtherContentIsRefused()
    {
        StandIns commands;
        signedContent(commands, "just text", "");
        EditorXmlData data;
        const QString error = problemText(readProfile(written(derStart), data));
        QVERIFY2(error.startsWith(QStringLiteral("is no property list (")), qPrintable(error));
        QVERIFY(data == EditorXmlData());
    }

    void theTextOfARecordReadsBack()
    {
        EditorXmlData back;
        const EditorXmlData data = RecordSamples::everythingChanged();
        const Result<QString> text = ConfigGenerator::generate(&data, Product::reader());
        QCOMPARE(problemText(text), QString());
        const Result<ReadProfile> profile = readProfile(written(text->toUtf8()), back);
        QCOMPARE(problemText(profile), QString());
        QCOMPARE(profile->product, &Product::reader());
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

QTEST_GUILESS_MAIN(tst_ReadProfile)
#include "tst_ReadProfile.moc"
