// SPDX-License-Identifier: Apache-2.0
#include "config/XmlText.h"

#include <QtTest>

class tst_XmlText : public QObject
{
    Q_OBJECT

private slots:
    void onlyWhatCanBeReadAgainIsKept_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("kept");
        const QString letters = QStringLiteral("aä日\U0001F600");
        QTest::newRow("empty") << QString() << QString();
        QTest::newRow("letters of every length") << letters << letters;
        QTest::newRow("tab and line breaks") << QStringLiteral("\t\n\r") << QStringLiteral("\t\n\r");
        QTest::newRow("a byte order mark first") << QStringLiteral("\ufeffa") << QStringLiteral("\ufeffa");
        QTest::newRow("U+FFFD") << QStringLiteral("\ufffd") << QStringLiteral("\ufffd");
        QTest::newRow("beyond the first plane")
            << QStringLiteral("\U0001FFFE\U0010FFFF") << QStringLiteral("\U0001FFFE\U0010FFFF");
        QTest::newRow("controls") << QStringLiteral("\u0001a\u001fb\u007fc") << QStringLiteral("abc");
        QTest::newRow("NUL") << QStringLiteral("a") + QChar(0) + QStringLiteral("b") << QStringLiteral("ab");
        QTest::newRow("U+FFFE and U+FFFF")
            << QStringLiteral("a") + QChar(0xfffe) + QStringLiteral("b") + QChar(0xffff)
            << QStringLiteral("ab");
        QTest::newRow("first half of a pair")
            << QStringLiteral("a") + QChar(0xd83d) + QStringLiteral("b") << QStringLiteral("ab");
        QTest::newRow("first half at the end") << QStringLiteral("a") + QChar(0xd83d) << QStringLiteral("a");
        QTest::newRow("two first halves, one second")
            << QString(QChar(0xd83d)) + QStringLiteral("\U0001F600") << QStringLiteral("\U0001F600");
        QTest::newRow("the wrong way round") << QString(QChar(0xde00)) + QChar(0xd83d) << QString();
    }

    void onlyWhatCanBeReadAgainIsKept()
    {
        QFETCH(QString, text);
        QFETCH(QString, kept);
        QCOMPARE(xmlText(text), kept);
        QCOMPARE(isXmlText(text), text == kept);
    }

    void anElementIsCalledByANameOnly()
    {
        for (const QString &name :
             {QStringLiteral("a"), QStringLiteral("_x"), QStringLiteral("ä1.b-c"), QStringLiteral("a:b")})
            QVERIFY2(isXmlName(name), qPrintable(name));
        for (const QString &name : {QString(), QStringLiteral("1a"), QStringLiteral("-a"),
                                    QStringLiteral("a b"), QStringLiteral("a<"), QStringLiteral("a\"b")})
            QVERIFY2(!isXmlName(name), qPrintable(name));
    }
};

QTEST_GUILESS_MAIN(tst_XmlText)
#include "tst_XmlText.moc"
