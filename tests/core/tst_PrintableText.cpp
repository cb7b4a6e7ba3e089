// SPDX-License-Identifier: Apache-2.0
#include "core/PrintableText.h"

#include <QJsonDocument>
#include <QJsonObject>
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
        QTest::newRow("terminal command in one character")
            << QString(QChar(0x9b)) + QStringLiteral("2J") << QStringLiteral("\\x9b2J");
        QTest::newRow("invisible tag") << QString::fromUtf8("\U000E0041") << QStringLiteral("\\U000e0041");
        QTest::newRow("half a pair") << QString(QChar(0xd83d)) << QStringLiteral("\\ud83d");
        QTest::newRow("emoji") << QString::fromUtf8("\U0001F600") << QString::fromUtf8("\U0001F600");
        QTest::newRow("line separator") << QString(QChar(0x2028)) << QStringLiteral("\\u2028");
    }

    void unsafeCharactersBecomeVisible()
    {
        QFETCH(QString, text);
        QTEST(printableText(text), "line");
    }

    void aPathKeepsItsBackslashes()
    {
        QCOMPARE(visibleText(QStringLiteral("a\\b\x1b")), QStringLiteral("a\\b\\x1b"));
    }

    void linesStayLines()
    {
        QCOMPARE(visibleLines(QStringLiteral("a\nb\tc\x1b")), QStringLiteral("a\nb\tc\\x1b"));
    }

    void jsonSaysTheSame()
    {
        const QString name = QStringLiteral("a\n\x9b") + QChar(0x202e) + QString::fromUtf8("\U000E0041é");
        const QByteArray json = QJsonDocument(QJsonObject{{QStringLiteral("name"), name}}).toJson();
        const QString visible = visibleJson(QString::fromUtf8(json));
        QCOMPARE(visible, QStringLiteral("{\n    \"name\": \"a\\n\\u009b\\u202e\\udb40\\udc41é\"\n}\n"));
        QCOMPARE(QJsonDocument::fromJson(visible.toUtf8()), QJsonDocument::fromJson(json));
    }

    void whatIsCutEndsWithAnEllipsis_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("line");
        QTest::newRow("shorter") << QStringLiteral("abc") << QStringLiteral("abc");
        QTest::newRow("just as long") << QStringLiteral("abcd") << QStringLiteral("abcd");
        QTest::newRow("longer") << QStringLiteral("abcde") << QStringLiteral("abcd…");
        QTest::newRow("escaped behind the cut") << QStringLiteral("abc\n\n") << QStringLiteral("abc\\n…");
        QTest::newRow("half a pair") << QStringLiteral("abc😀") << QStringLiteral("abc…");
    }

    void whatIsCutEndsWithAnEllipsis()
    {
        QFETCH(QString, text);
        QTEST(printableStart(text, 4), "line");
    }
};

QTEST_GUILESS_MAIN(tst_PrintableText)
#include "tst_PrintableText.moc"
