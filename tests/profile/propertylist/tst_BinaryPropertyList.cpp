// SPDX-License-Identifier: Apache-2.0
#include "profile/propertylist/PropertyListFormats.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

namespace {

/// Writes down what it is given, one word for each piece.
class Notes : public PropertyList::Sink
{
public:
    QStringList words;

    void beginDictionary() override { words += QStringLiteral("{"); }
    void beginArray() override { words += QStringLiteral("["); }
    void end() override { words += QStringLiteral("end"); }
    void key(const QString &text) override { words += text + QLatin1Char('='); }
    void scalar(const PropertyList::Scalar &value) override
    {
        if (const auto *number = std::get_if<qint64>(&value))
            words += QString::number(*number);
        else if (const auto *text = std::get_if<QString>(&value))
            words += QLatin1Char('"') + *text;
        else
            words += QStringLiteral("other");
    }
};

/// A binary list that Python's library writes of an expression.
QByteArray writtenByPython(const QString &expression)
{
    const QString script =
        QStringLiteral("import plistlib, sys\n"
                       "from plistlib import UID\n"
                       "sys.stdout.buffer.write(plistlib.dumps(%1, fmt=plistlib.FMT_BINARY, "
                       "sort_keys=False))\n")
            .arg(expression);
    return TestFiles::outputOf(QStringLiteral("/usr/bin/python3"), {QStringLiteral("-c"), script});
}

} // namespace

class tst_BinaryPropertyList : public QObject
{
    Q_OBJECT

private slots:
    void everyPieceComesInItsPlace_data()
    {
        QTest::addColumn<QString>("written");
        QTest::addColumn<QString>("words");
        const auto row = [](const char *written, const char *words) {
            QTest::newRow(written) << QString::fromLatin1(written) << QString::fromLatin1(words);
        };
        row("'a'", "\"a");
        row("-1", "-1");
        row("[1, ['a'], {}]", "[ 1 [ \"a end { end end");
        row("{'a': {'b': 2}, 'c': 'd'}", "{ a= { b= 2 end c= \"d end");
        row("[1.5, True, b'x']", "[ other other other end");
        row("UID(5)", "{ CF$UID= 5 end");
        row("{'a': UID(258)}", "{ a= { CF$UID= 258 end end");
        row("UID(2**32 - 1)", "{ CF$UID= 4294967295 end");
    }

    void everyPieceComesInItsPlace()
    {
        QFETCH(QString, written);
        Notes notes;
        QVERIFY(BinaryPropertyList::read(writtenByPython(written), notes));
        QTEST(notes.words.join(QLatin1Char(' ')), "words");
    }

    void aUidOfMoreThanFourBytesIsRefused()
    {
        Notes notes;
        const Result<> refused =
            BinaryPropertyList::read(writtenByPython(QStringLiteral("UID(2**32)")), notes);
        QVERIFY(!refused);
        QVERIFY(!refused.problem().text.isEmpty());
    }
};

QTEST_GUILESS_MAIN(tst_BinaryPropertyList)
#include "tst_BinaryPropertyList.moc"
