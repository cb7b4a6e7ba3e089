// SPDX-License-Identifier: Apache-2.0
#include "core/PrintableText.h"

#include <QtTest>

class tst_PrintableText : public QObject
{
    Q_OBJECT

private slots:
    void unsafeCharactersBecomeVisible_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("line");
        QTest::newRow("plain") << QStringLiteral("A b.pkg") << QStringLiteral("A b.pkg");
        QTest::newRow("letters of other scripts")
            << QStringLiteral("Ärger 日本") << QStringLiteral("Ärger 日本");
        QTest::newRow("line feed") << QStringLiteral("a\nb\tc") << QStringLiteral("a\\nb\\tc");
        QTest::newRow("escape sequence") << QStringLiteral("\x1b[2J") << QStringLiteral("\\x1b[2J");
        QTest::newRow("delete") << QStringLiteral("\x7f") << QStringLiteral("\\x7f");
        QTest::newRow("backslash") << QStringLiteral("a\\nb") << QStringLiteral("a\\\\nb");
        QTest::newRow("reordering") << QString(QChar(0x202e)) << QStringLiteral("\\u202e");
        QTest::newRow("line separator") << QString(QChar(0x2028)) << QStringLiteral("\\u2028");
    }

    void unsafeCharactersBecomeVisible()
    {
        QFETCH(QString, text);
        QTEST(printableText(text), "line");
    }
};

QTEST_GUILESS_MAIN(tst_PrintableText)
#include "tst_PrintableText.moc"
