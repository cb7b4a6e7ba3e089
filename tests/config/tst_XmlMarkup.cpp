// SPDX-License-Identifier: Apache-2.0
#include "config/XmlMarkup.h"

#include "config/XmlTree.h"
#include "tests/support/ProblemText.h"
#include "tests/support/TestFiles.h"

#include <QDomDocument>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QDomDocument tree(const QByteArray &xml)
{
    const Result<QDomDocument> document = XmlTree::read(xml);
    if (!document)
        qFatal("%s: %s", xml.constData(), qPrintable(problemText(document)));
    return *document;
}

} // namespace

class tst_XmlMarkup : public QObject
{
    Q_OBJECT

private slots:
    void attributesAreSortedByName_data();
    void attributesAreSortedByName();
    void whatIsWrittenReadsTheSame_data();
    void whatIsWrittenReadsTheSame();
    void eachChildHasALine();
    void anyNodeCanBeWritten();
    void anotherReaderSeesTheSameValues();
};

void tst_XmlMarkup::attributesAreSortedByName_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *name, const char *xml, const char *expected) {
        QTest::newRow(name) << QByteArray(xml) << QByteArray(expected);
    };
    row("two", R"(<a z="1" b="2"/>)", R"(<a b="2" z="1"/>)");
    row("with contents", R"(<a z="1" b="2"><c y="" x=""/></a>)", R"(<a b="2" z="1"><c x="" y=""/></a>)");
    row("one", R"(<a b="1"/>)", R"(<a b="1"/>)");
    row("values like markup", R"(<a z="x > y / b=c" b=" q=1 "/>)", R"(<a b=" q=1 " z="x > y / b=c"/>)");
    row("names that begin with another", R"(<a ab="1" a-b="2" a="3"/>)", R"(<a a="3" a-b="2" ab="1"/>)");
    row("beyond ASCII", "<a z='\xc3\xbc' \xc3\xa4='\xe2\x82\xac' b=''/>",
        "<a b=\"\" z=\"\xc3\xbc\" \xc3\xa4=\"\xe2\x82\xac\"/>");
    row("text", R"(<a z="1" b="2">z="1" b="2"</a>)", R"(<a b="2" z="1">z="1" b="2"</a>)");
}

void tst_XmlMarkup::attributesAreSortedByName()
{
    QFETCH(QByteArray, xml);
    QTEST(XmlMarkup::of(tree(xml), XmlMarkup::onOneLine), "expected");
}

void tst_XmlMarkup::whatIsWrittenReadsTheSame_data()
{
    QTest::addColumn<QByteArray>("xml");
    for (const char *xml :
         {"<a/>", "<a>x</a>", "<a><!-- <b z=\"1\" b=\"2\"/> --></a>",
          "<a><![CDATA[<b z=\"1\" b=\"2\"/>]]></a>", "<?xml version='1.0' encoding='UTF-8'?><a/>",
          "<a><?p d?></a>", "<a>&lt;&amp;>\"'&#xd;\n\t]]&gt;</a>",
          "<a b=\"&lt;&amp;>&quot;'&#xd;&#xa;&#x9;]]&gt;\"/>", "<a>\xf0\x9f\x98\x80</a>", "<x:a y:b=\"\"/>",
          "<a>1<b/>2<!--c-->3<?p d?>4<![CDATA[5]]>6</a>"})
        QTest::newRow(xml) << QByteArray(xml);
}

void tst_XmlMarkup::whatIsWrittenReadsTheSame()
{
    QFETCH(QByteArray, xml);
    QCOMPARE(XmlMarkup::of(tree(xml), XmlMarkup::onOneLine), xml);
    QCOMPARE(XmlMarkup::of(tree(XmlMarkup::of(tree(xml), 4)), XmlMarkup::onOneLine), xml);
}

void tst_XmlMarkup::eachChildHasALine()
{
    const QByteArray xml = "<!--c--><a z='1' b='&#10;'><b><c/></b>t<d><!--e--><f>g</f></d><h><?p d?></h></a>";
    QCOMPARE(XmlMarkup::of(tree(xml), 2), QByteArray("<!--c-->\n"
                                                     "<a b=\"&#xa;\" z=\"1\">\n"
                                                     "  <b>\n"
                                                     "    <c/>\n"
                                                     "  </b>t<d>\n"
                                                     "    <!--e-->\n"
                                                     "    <f>g</f>\n"
                                                     "  </d>\n"
                                                     "  <h>\n"
                                                     "    <?p d?>\n"
                                                     "  </h>\n"
                                                     "</a>\n"));
}

void tst_XmlMarkup::anyNodeCanBeWritten()
{
    const QDomDocument document = tree("<a><b c='d'/></a>");
    QCOMPARE(XmlMarkup::of(document.documentElement().firstChild(), 4), QByteArray("    <b c=\"d\"/>\n"));
    QCOMPARE(XmlMarkup::of(QDomElement(), 4), QByteArray());
}

void tst_XmlMarkup::anotherReaderSeesTheSameValues()
{
    const QString value = QStringLiteral("a\"'<&>b\n\t\r]]>\u00e9\U0001F600\ufeff");
    QDomDocument document;
    QDomElement root = document.createElement(QStringLiteral("root"));
    root.setAttribute(QStringLiteral("value"), value);
    root.appendChild(document.createTextNode(value));
    document.appendChild(root);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("document.xml"));
    TestFiles::write(path, XmlMarkup::of(document, 4));
    for (const char *place : {"string(/root/@value)", "string(/root)"}) {
        const QByteArray read = TestFiles::outputOf(
            QStringLiteral("xmllint"), {QStringLiteral("--xpath"), QString::fromLatin1(place), path});
        QCOMPARE(QString::fromUtf8(read), value + QLatin1Char('\n'));
    }
}

QTEST_GUILESS_MAIN(tst_XmlMarkup)
#include "tst_XmlMarkup.moc"
