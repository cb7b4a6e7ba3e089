// SPDX-License-Identifier: Apache-2.0
#include "profile/propertylist/PropertyListInput.h"

#include "profile/CProfileGenerator.h"
#include "profile/ReadProfile.h"
#include "tests/profile/CocoaCalls.h"
#include "tests/profile/ProfileSamples.h"
#include "tests/support/ProblemText.h"
#include "tests/support/TestFiles.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace ProfileSamples;

namespace {

QByteArray nested(int depth)
{
    return propertyList(QByteArray("<dict><key>a</key>").repeated(depth) + "<dict/>" +
                        QByteArray("</dict>").repeated(depth));
}

QByteArray bigEndian(quint64 value, int width)
{
    QByteArray bytes;
    for (int i = width - 1; i >= 0; --i)
        bytes += char(value >> (8 * i) & 0xff);
    return bytes;
}

/// A binary property list of the given objects; the first is the top. References take one byte.
QByteArray binary(const QList<QByteArray> &objects)
{
    QByteArray bytes("bplist00");
    QByteArray table;
    for (const QByteArray &object : objects) {
        table += bigEndian(quint64(bytes.size()), 4);
        bytes += object;
    }
    const int tableStart = bytes.size();
    return bytes + table + QByteArray(6, '\0') + '\x04' + '\x01' + bigEndian(quint64(objects.size()), 8) +
           bigEndian(0, 8) + bigEndian(quint64(tableStart), 8);
}

/// Each array refers to the next one 14 times; written out, the last appears 14^16 times.
QByteArray binaryBomb()
{
    QList<QByteArray> objects;
    for (int i = 0; i < 16; ++i)
        objects << '\xae' + QByteArray(14, char(i + 1));
    return binary(objects << QByteArray("\x51x"));
}

} // namespace

/// Input that would exhaust Foundation's parsers is refused.
class tst_PropertyListInput : public QObject
{
    Q_OBJECT

private slots:
    void hostileInputIsRefused_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("problem");
        QTest::newRow("nested 100,000 deep") << nested(100000) << QStringLiteral("nested deeper");
        QTest::newRow("arrays nested 100,000 deep in the old style")
            << QByteArray(100000, '(') + QByteArray(100000, ')') << QStringLiteral("nested deeper");
        QTest::newRow("dictionaries nested 100,000 deep in the old style")
            << QByteArray("{a=").repeated(100000) << QStringLiteral("nested deeper");
        QTest::newRow("too many texts in the old style")
            << "{a=(" + QByteArray("b,").repeated(PropertyListInput::maximumNodes) + ");}"
            << QStringLiteral("keys and values");
        QTest::newRow("entity bomb")
            << QByteArray(
                   "<?xml version=\"1.0\"?><!DOCTYPE plist [<!ENTITY a \"aaaaaaaaaa\">"
                   "<!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;\">]><plist><string>&b;</string></plist>")
            << QStringLiteral("declares entities");
        QTest::newRow("100,000 entity declarations")
            << "<!DOCTYPE plist [" + QByteArray("<!ENTITY abc \"x\">").repeated(100000) + "]><plist/>"
            << QStringLiteral("declares entities");
        QTest::newRow("external entity")
            << QByteArray("<!DOCTYPE plist [<!ENTITY a SYSTEM \"file:///etc/passwd\">]><plist>&a;</plist>")
            << QStringLiteral("declares entities");
        QTest::newRow("unknown entity")
            << propertyList("<string>&bomb;</string>") << QStringLiteral("line 2");
        QTest::newRow("too many elements")
            << propertyList(array(QByteArray("<true/>").repeated(PropertyListInput::maximumNodes)))
            << QStringLiteral("more than");
        QTest::newRow("100 MB") << propertyList(string(QByteArray(100 * 1000 * 1000, 'x')))
                                << QStringLiteral("larger than 32 MiB");
        QTest::newRow("100 MB of brackets")
            << QByteArray(100 * 1000 * 1000, '{') << QStringLiteral("larger than 32 MiB");
        QTest::newRow("another document in UTF-16")
            << QByteArray("\xff\xfe<\0a\0/\0>\0", 10) << QStringLiteral("no element \"a\"");
        QTest::newRow("delete character")
            << propertyList("<string>\x7f</string>") << QStringLiteral("control characters");
        QTest::newRow("binary: an array that holds itself")
            << binary({QByteArray("\xa1\x00", 2)}) << QStringLiteral("damaged");
        QTest::newRow("binary: a dictionary that holds itself")
            << binary({QByteArray("\xd1\x01\x00", 3), QByteArray("\x51k")}) << QStringLiteral("damaged");
        QTest::newRow("binary: bomb of shared arrays") << binaryBomb() << QStringLiteral("damaged");
        QTest::newRow("binary: a reference beyond the table")
            << binary({QByteArray("\xa1\x07", 2)}) << QStringLiteral("damaged");
        QTest::newRow("binary: a text longer than the file")
            << binary({QByteArray("\x5f\x13\x7f\xff\xff\xff\xff\xff\xff\xff", 10)})
            << QStringLiteral("damaged");
        QTest::newRow("binary: an unknown type") << binary({QByteArray("\x90")}) << QStringLiteral("damaged");
        QTest::newRow("binary: only a header") << QByteArray("bplist00") << QStringLiteral("damaged");
        QTest::newRow("binary: no offsets at all")
            << QByteArray("bplist00") + QByteArray(40, '\0') << QStringLiteral("damaged");
    }

    void hostileInputIsRefused()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, problem);
        const QString error = CocoaCalls::readingProblem(bytes);
        QVERIFY2(error.contains(problem), qPrintable(error));
    }

    void hostileFilesLeaveTheRecord_data() { hostileInputIsRefused_data(); }

    void hostileFilesLeaveTheRecord()
    {
        QFETCH(QByteArray, bytes);
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.mobileconfig"));
        TestFiles::write(path, bytes);
        EditorXmlData data;
        QVERIFY(!problemText(readProfile(path, data)).isEmpty());
        QVERIFY(!CProfileGenerator::ImportProfile(path, &data, true));
        QVERIFY(data == EditorXmlData());
    }

    void theLargestThatIsAcceptedIsRead_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("deepest XML") << nested(PropertyListInput::maximumDepth - 2);
        QTest::newRow("deepest in the old style")
            << "{a=" + QByteArray(PropertyListInput::maximumDepth - 1, '(') +
                   QByteArray(PropertyListInput::maximumDepth - 1, ')') + ";}";
        QTest::newRow("most brackets in the old style")
            << "{a=(" + QByteArray("(),").repeated(PropertyListInput::maximumNodes - 3) + ");}";
        QTest::newRow("most elements") << propertyList(
            dictionary({"a", array(QByteArray("<true/>").repeated(PropertyListInput::maximumNodes - 5))}));
        QTest::newRow("most backslashes")
            << propertyList(dictionary({"a", string(QByteArray(32 * 1000 * 1000, '\\'))}));
        QTest::newRow("most texts in the old style")
            << "{a=(" + QByteArray("b,").repeated(PropertyListInput::maximumNodes - 3) + ");}";
        QTest::newRow("largest") << propertyList(
            dictionary({"a", string(QByteArray(32 * 1000 * 1000, 'x'))}));
    }

    void theLargestThatIsAcceptedIsRead()
    {
        QFETCH(QByteArray, bytes);
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.mobileconfig"));
        TestFiles::write(path, bytes);
        EditorXmlData data;
        QCOMPARE(problemText(readProfile(path, data)), QStringLiteral("holds no PayloadContent"));
    }

    /// Any byte of a good list may be damaged: it is refused or read, and nothing else.
    void damagedBinaryListsNeverCrash()
    {
        QLoggingCategory::setFilterRules(QStringLiteral("pct.*=false"));
        QRandomGenerator random(7);
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.mobileconfig"));
        const QByteArray good =
            binary({QByteArray("\xd2\x01\x02\x03\x04", 5), QByteArray("\x5e") + "PayloadContent",
                    QByteArray("\x51k"), QByteArray("\xa1\x05", 2),
                    QByteArray("\x33") + bigEndian(0x41b0000000000000, 8), QByteArray("\xd1\x02\x06", 3),
                    QByteArray("\x61\x00\x41", 3)});
        int accepted = 0;
        for (int i = 0; i < 1000; ++i) {
            QByteArray bytes = good;
            bytes[int(random.bounded(bytes.size()))] = char(random.bounded(256));
            TestFiles::write(path, bytes);
            EditorXmlData data;
            QVERIFY(!readProfile(path, data));
            accepted += CocoaCalls::readingProblem(bytes).isEmpty() ? 1 : 0;
        }
        QVERIFY(accepted > 30); // else hardly more than the header would have been read
    }
};

QTEST_GUILESS_MAIN(tst_PropertyListInput)
#include "tst_PropertyListInput.moc"
