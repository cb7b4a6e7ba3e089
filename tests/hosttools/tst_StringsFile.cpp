// SPDX-License-Identifier: Apache-2.0
#include "hosttools/flatpkg/StringsFile.h"

#include <QTest>

using namespace FlatPkg;

/// The text form of localization tables.
class tst_StringsFile : public QObject
{
    Q_OBJECT

private slots:
    void readsPairs_data();
    void readsPairs();
    void endsAtWhatIsMalformed_data();
    void endsAtWhatIsMalformed();
};

void tst_StringsFile::readsPairs_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("value");
    QTest::newRow("quoted") << QStringLiteral("\"KEY\" = \"value\";") << QStringLiteral("value");
    QTest::newRow("bare key") << QStringLiteral("KEY=\"value\";") << QStringLiteral("value");
    QTest::newRow("bare value") << QStringLiteral("KEY = value;") << QStringLiteral("value");
    QTest::newRow("comments") << QStringLiteral("/* a */ // b\n\"KEY\" /* = */ = // x\n\"value\";")
                              << QStringLiteral("value");
    QTest::newRow("comment signs in a value")
        << QStringLiteral("\"KEY\" = \"a // b /* c\";") << QStringLiteral("a // b /* c");
    QTest::newRow("escapes") << QStringLiteral("\"KEY\" = \"a\\\"b\\\\c\\n\\td\\U00e4\";")
                             << QStringLiteral("a\"b\\c\n\td\u00e4");
    QTest::newRow("after another pair")
        << QStringLiteral("\"A\" = \"1\";\n\n\"KEY\" = \"2\";") << QStringLiteral("2");
    QTest::newRow("a second time") << QStringLiteral("\"KEY\" = \"1\"; \"KEY\" = \"2\";")
                                   << QStringLiteral("2");
    QTest::newRow("empty value") << QStringLiteral("\"KEY\" = \"\";") << QStringLiteral("");
}

void tst_StringsFile::readsPairs()
{
    QFETCH(QString, text);
    QFETCH(QString, value);
    const std::optional<QString> found = textIn(text, QStringLiteral("KEY"));
    QVERIFY(found.has_value());
    QCOMPARE(*found, value);
}

void tst_StringsFile::endsAtWhatIsMalformed_data()
{
    QTest::addColumn<QString>("rest");
    for (const auto *rest : {"", "\"KEY\"", "\"KEY\" =", "\"KEY\" = \"open", "\"KEY\" = \"no semicolon\"",
                             "= \"no key\";", "\"KEY\" \"no sign\";", "/* open", "\"KEY\" = \"\\", "\\"})
        QTest::newRow(rest) << QString::fromLatin1(rest);
}

void tst_StringsFile::endsAtWhatIsMalformed()
{
    QFETCH(QString, rest);
    const QString table = QStringLiteral("\"FIRST\" = \"1\";\n") + rest;
    QCOMPARE(textIn(table, QStringLiteral("FIRST")).value_or(QString()), QStringLiteral("1"));
    QVERIFY(!textIn(table, QStringLiteral("KEY")).has_value());
}

QTEST_GUILESS_MAIN(tst_StringsFile)
#include "tst_StringsFile.moc"
