// SPDX-License-Identifier: Apache-2.0
#include "profile/PayloadUuid.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

namespace {

/// What Python makes of an identifier and, below it, of a payload's type, one a line.
QStringList pythonUuids(const QString &identifier, const QString &type)
{
    const QString script = QStringLiteral("import sys, uuid\n"
                                          "outer = uuid.uuid5(uuid.NAMESPACE_DNS, sys.argv[1])\n"
                                          "print(outer, uuid.uuid5(outer, sys.argv[2]), sep='\\n')");
    return QString::fromLatin1(TestFiles::outputOf(QStringLiteral("/usr/bin/python3"),
                                                   {QStringLiteral("-c"), script, identifier, type}))
        .toUpper()
        .split(QLatin1Char('\n'));
}

} // namespace

/// UUIDs that follow from names, against another program's.
class tst_PayloadUuid : public QObject
{
    Q_OBJECT

private slots:
    void followsFromTheNamesAsPythonsDoes_data()
    {
        QTest::addColumn<QString>("identifier");
        QTest::newRow("plain") << QStringLiteral("org.example.pelix-editor");
        QTest::newRow("short") << QStringLiteral("a");
        QTest::newRow("not ASCII") << QString::fromUtf8("org.example.b\xC3\xBCro.\xF0\x9F\x96\x8A");
        QTest::newRow("long") << QString(5000, QLatin1Char('x'));
    }

    void followsFromTheNamesAsPythonsDoes()
    {
        QFETCH(QString, identifier);
        const QString type = QStringLiteral("com.pelix-software.Pelix.PDF.Editor.settings");
        const QStringList expected = pythonUuids(identifier, type);
        const QString outer = stableProfileUuid(identifier);
        QCOMPARE(outer, expected.at(0));
        QCOMPARE(stablePayloadUuid(outer, type), expected.at(1));
        QCOMPARE(stablePayloadUuid(outer.toLower(), type), expected.at(1));
    }

    void isAnotherForEachNameAndRandomWithoutOne()
    {
        const QString outer = stableProfileUuid(QStringLiteral("org.example.one"));
        QVERIFY(outer != stableProfileUuid(QStringLiteral("org.example.two")));
        QVERIFY(stablePayloadUuid(outer, QStringLiteral("a")) !=
                stablePayloadUuid(outer, QStringLiteral("b")));
        QCOMPARE(freshUuid().at(14), QLatin1Char('4'));
        QVERIFY(freshUuid() != freshUuid());
    }
};

QTEST_GUILESS_MAIN(tst_PayloadUuid)
#include "tst_PayloadUuid.moc"
