// SPDX-License-Identifier: Apache-2.0
#include "config/XmlGuard.h"

#include <QtTest>

namespace {

QByteArray nested(int depth)
{
    return QByteArray("<a>").repeated(depth) + QByteArray("</a>").repeated(depth);
}

QByteArray siblings(int count)
{
    return "<r>" + QByteArray("<a/>").repeated(count - 1) + "</r>";
}

} // namespace

class tst_XmlGuard : public QObject
{
    Q_OBJECT

private slots:
    void acceptsOrRefuses_data()
    {
        QTest::addColumn<QByteArray>("xml");
        QTest::addColumn<QString>("problem"); // empty: accepted
        const QString none;
        QTest::newRow("plain") << QByteArray("<a b=\"c\">text</a>") << none;
        QTest::newRow("declaration, comment, line ends")
            << QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<!-- x -->\t<a/>\n") << none;
        QTest::newRow("white space by reference") << QByteArray("<a b=\"&#10;&#9;\"/>") << none;
        QTest::newRow("deepest allowed") << nested(XmlGuard::maximumDepth) << none;
        QTest::newRow("one too deep")
            << nested(XmlGuard::maximumDepth + 1) << QStringLiteral("nested deeper");
        QTest::newRow("100,000 deep") << nested(100000) << QStringLiteral("nested deeper");
        QTest::newRow("most nodes") << siblings(XmlGuard::maximumNodes) << none;
        QTest::newRow("too many nodes")
            << siblings(XmlGuard::maximumNodes + 1) << QStringLiteral("more than");
        QTest::newRow("too large") << QByteArray("<a/>") + QByteArray(int(XmlGuard::maximumBytes), ' ')
                                   << QStringLiteral("larger than");
        QTest::newRow("document type") << QByteArray("<!DOCTYPE a><a/>") << QStringLiteral("document type");
        QTest::newRow("entity bomb")
            << QByteArray("<!DOCTYPE a [<!ENTITY b \"bb\"><!ENTITY c \"&b;&b;\">]><a>&c;</a>")
            << QStringLiteral("document type");
        QTest::newRow("unknown entity") << QByteArray("<a>&b;</a>") << QStringLiteral("line 1");
        QTest::newRow("empty") << QByteArray() << QStringLiteral("line 1");
        QTest::newRow("not XML") << QByteArray("hello") << QStringLiteral("line 1");
        QTest::newRow("truncated") << QByteArray("<a><b>\n</b>") << QStringLiteral("line 2");
        QTest::newRow("two roots") << QByteArray("<a/><b/>") << QStringLiteral("line 1");
        QTest::newRow("NUL in text") << QByteArray("<a>x\0y</a>", 10) << QStringLiteral("line 1");
        QTest::newRow("NUL in a value") << QByteArray("<a b=\"x\0y\"/>", 12) << QStringLiteral("line 1");
        QTest::newRow("escape in text") << QByteArray("<a>\x1b</a>") << QStringLiteral("line 1");
        QTest::newRow("escape in a value") << QByteArray("<a b=\"\x1b\"/>") << QStringLiteral("line 1");
        QTest::newRow("control by reference") << QByteArray("<a>&#1;</a>") << QStringLiteral("line 1");
        QTest::newRow("noncharacter") << QByteArray("<a>\xef\xbf\xbe</a>") << QStringLiteral("line 1");
        QTest::newRow("delete character") << QByteArray("<a b=\"\x7f\"/>") << QStringLiteral("control");
    }

    void acceptsOrRefuses()
    {
        QFETCH(QByteArray, xml);
        QFETCH(QString, problem);
        QString error = QStringLiteral("untouched");
        QCOMPARE(XmlGuard::accepts(xml, &error), problem.isEmpty());
        QVERIFY2(problem.isEmpty() ? error.isEmpty() : error.contains(problem), qPrintable(error));
        QCOMPARE(XmlGuard::accepts(xml), problem.isEmpty());
    }
};

QTEST_GUILESS_MAIN(tst_XmlGuard)
#include "tst_XmlGuard.moc"
