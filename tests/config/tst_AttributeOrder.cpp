// SPDX-License-Identifier: Apache-2.0
#include "config/AttributeOrder.h"

#include <QDomDocument>
#include <QtTest>

class tst_AttributeOrder : public QObject
{
    Q_OBJECT

private slots:
    void attributesAreSortedByName_data();
    void attributesAreSortedByName();
    void whatQDomWroteStaysTheSameDocument();
};

void tst_AttributeOrder::attributesAreSortedByName_data()
{
    QTest::addColumn<QString>("markup");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *markup, const char *expected) {
        QTest::newRow(name) << QString::fromUtf8(markup) << QString::fromUtf8(expected);
    };
    row("two", R"(<a z="1" b="2"/>)", R"(<a b="2" z="1"/>)");
    row("with contents", R"(<a z="1" b="2"><c y="" x=""/></a>)", R"(<a b="2" z="1"><c x="" y=""/></a>)");
    row("none", R"(<a/><b></b>)", R"(<a/><b></b>)");
    row("one", R"(<a b="1"/>)", R"(<a b="1"/>)");
    row("values like markup", R"(<a z="x > y / b=c" b=" q=1 "/>)", R"(<a b=" q=1 " z="x > y / b=c"/>)");
    row("a name that begins another", R"(<a ab="1" a="2"/>)", R"(<a a="2" ab="1"/>)");
    row("beyond ASCII", u8R"(<a z="ü" ä="€" b=""/>)", u8R"(<a b="" z="ü" ä="€"/>)");
    row("text", R"(<a z="1" b="2">z="1" b="2"</a>)", R"(<a b="2" z="1">z="1" b="2"</a>)");
    row("a comment", R"(<!-- <a z="1" b="2"/> -->)", R"(<!-- <a z="1" b="2"/> -->)");
    row("CDATA", R"(<![CDATA[<a z="1" b="2"/>]]>)", R"(<![CDATA[<a z="1" b="2"/>]]>)");
    row("the declaration", R"(<?xml version="1.0" encoding="UTF-8"?>)",
        R"(<?xml version="1.0" encoding="UTF-8"?>)");
}

void tst_AttributeOrder::attributesAreSortedByName()
{
    QFETCH(QString, markup);
    QTEST(withSortedAttributes(markup), "expected");
}

void tst_AttributeOrder::whatQDomWroteStaysTheSameDocument()
{
    QDomDocument document;
    QDomElement root = document.createElement(QStringLiteral("root"));
    document.appendChild(root);
    const QStringList values = {QStringLiteral("a\"b"), QStringLiteral("<c z=\"1\" b=\"2\">"),
                                QStringLiteral("line\nbreak\ttab"), QStringLiteral("'&' ]]>"), QString()};
    for (int i = 0; i < values.size(); ++i)
        root.setAttribute(QStringLiteral("name%1").arg(values.size() - i), values.at(i));
    QDomDocument sorted;
    QVERIFY(sorted.setContent(withSortedAttributes(document.toString(4))));
    QCOMPARE(sorted.documentElement().attributes().count(), values.size());
    for (int i = 0; i < values.size(); ++i)
        QCOMPARE(sorted.documentElement().attribute(QStringLiteral("name%1").arg(values.size() - i)),
                 values.at(i));
}

QTEST_APPLESS_MAIN(tst_AttributeOrder)
#include "tst_AttributeOrder.moc"
