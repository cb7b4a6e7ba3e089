// SPDX-License-Identifier: Apache-2.0
#include "config/XmlTree.h"
#include "tests/support/ProblemText.h"

#include <QDomDocument>
#include <QtTest>

#include <algorithm>

namespace {

QByteArray attributesOf(const QDomNode &node)
{
    QByteArrayList list;
    const QDomNamedNodeMap attributes = node.attributes();
    for (int i = 0; i < attributes.size(); ++i)
        list += ' ' + attributes.item(i).nodeName().toUtf8() + '=' + attributes.item(i).nodeValue().toUtf8();
    std::sort(list.begin(), list.end());
    return list.join();
}

QByteArray typeOf(const QDomNode &node)
{
    if (node.isCDATASection())
        return "C";
    if (node.isText())
        return "T";
    if (node.isComment())
        return "!";
    return '?' + node.nodeName().toUtf8() + ' ';
}

/// What a tree holds: each node's type, name and value or children.
QByteArray described(const QDomNode &node)
{
    QByteArray text;
    for (QDomNode child = node.firstChild(); !child.isNull(); child = child.nextSibling()) {
        if (child.isElement())
            text += '<' + child.nodeName().toUtf8() + attributesOf(child) + '>' + described(child) + "</>";
        else
            text += typeOf(child) + child.nodeValue().toUtf8() + ';';
    }
    return text;
}

} // namespace

class tst_XmlTree : public QObject
{
    Q_OBJECT

private slots:
    void treesLookAsTheTextSays_data();
    void treesLookAsTheTextSays();
    void qtsReaderSeesTheSameTree_data();
    void qtsReaderSeesTheSameTree();
    void aProblemSaysWhereItIs();
    void theFirstOfANameIsFoundAtAnyDepth();
    void elementsHaveThePlacesOfTheirTags();
};

void tst_XmlTree::treesLookAsTheTextSays_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QByteArray>("tree");
    const auto row = [](const char *xml, const char *tree) {
        QTest::newRow(xml) << QByteArray(xml) << QByteArray(tree);
    };
    row("<a b='&#128512;&#65536;&#x1FFFE;&#x10FFFF;'/>",
        "<a b=\xf0\x9f\x98\x80\xf0\x90\x80\x80\xf0\x9f\xbf\xbe\xf4\x8f\xbf\xbf></>");
    row("<a>&#128512;&#65536;&#x1FFFE;&#x10FFFF;</a>",
        "<a>T\xf0\x9f\x98\x80\xf0\x90\x80\x80\xf0\x9f\xbf\xbe\xf4\x8f\xbf\xbf;</>");
    row("<a b='1\n2\t3\r\n4\r5'/>", "<a b=1 2 3 4 5></>");
    row("<a b='1&#10;2&#9;3&#13;&#10;4&#xD;5'/>", "<a b=1\n2\t3\r\n4\r5></>");
    row("<a>1\r\n2\r3\n4</a>", "<a>T1\n2\n3\n4;</>");
    row("<a>\xc2\xa0</a>", "<a>T\xc2\xa0;</>");
    row("<a b='\xef\xbb\xbfx'/>", "<a b=\xef\xbb\xbfx></>");
    row("<x:a y:b='1'/>", "<x:a y:b=1></>");
    row("<?xml version='1.0' standalone='no'?><a/>", "?xml version='1.0';<a></>");
}

void tst_XmlTree::treesLookAsTheTextSays()
{
    QFETCH(QByteArray, xml);
    QFETCH(QByteArray, tree);
    const Result<QDomDocument> document = XmlTree::read(xml);
    QVERIFY2(document, qPrintable(problemText(document)));
    QCOMPARE(described(*document), tree);
}

/// Documents that Qt reads right in all its versions.
void tst_XmlTree::qtsReaderSeesTheSameTree_data()
{
    QTest::addColumn<QByteArray>("xml");
    for (const char *xml : {"<a b=\"c\">text</a>",
                            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<!-- x -->\t<a/>\n",
                            "<?xml version='1.0' encoding='utf-8' standalone='yes'?><a/>",
                            "<?xml version='1.0'?><a/>",
                            "<a>  <b/>  </a>",
                            "<a> x <b/> y </a>",
                            "<a>&#32;</a>",
                            "<a>&#10;<b/></a>",
                            "<a>x&amp;y&lt;z</a>",
                            "<a>x<![CDATA[ <&> ]]>y</a>",
                            "<a><![CDATA[]]></a>",
                            "<a> <![CDATA[ ]]> </a>",
                            "<a><?pi some data?><?empty?></a>",
                            "<?pi top?><a/><!--end--><?tail x?>",
                            "<p:a xmlns:p='u' p:b='1' b='2'><p:c/></p:a>",
                            "<a xmlns='u'/>",
                            "<a b='x&#10;y&#9;z&#13;'/>",
                            "<a b=\"'&quot;&apos;&lt;&gt;&amp;\"/>",
                            "<a>x<!-- c -->y</a>",
                            "<a>x  <b/>\n  y</a>",
                            "<a>  &lt;  </a>",
                            "<a xml:space='preserve'> </a>",
                            "<a>\xc3\xa9\xf0\x9f\x98\x80</a>",
                            "\xef\xbb\xbf<a>\xc3\xa9</a>",
                            "<?xml version='1.0' encoding='ISO-8859-1'?><a b='\xe9'/>"})
        QTest::newRow(xml) << QByteArray(xml);
    QTest::newRow("UTF-16, little-endian") << QByteArray("\xff\xfe<\0a\0>\0\xe9\0<\0/\0a\0>\0", 18);
    QTest::newRow("UTF-16, big-endian") << QByteArray("\xfe\xff\0<\0a\0>\xd8\x3d\xde\0\0<\0/\0a\0>", 20);
    QTest::newRow("UTF-16 without a mark") << QByteArray("<\0a\0/\0>\0", 8);
}

void tst_XmlTree::qtsReaderSeesTheSameTree()
{
    QFETCH(QByteArray, xml);
    QDomDocument expected;
    QVERIFY(expected.setContent(xml));
    const Result<QDomDocument> document = XmlTree::read(xml);
    QVERIFY2(document, qPrintable(problemText(document)));
    QCOMPARE(described(*document), described(expected));
}

void tst_XmlTree::aProblemSaysWhereItIs()
{
    const Result<QDomDocument> document = XmlTree::read("<b>\n<c>");
    QVERIFY(!document);
    const QString problem = problemText(document);
    QVERIFY2(problem.startsWith(QStringLiteral("line 2, column ")), qPrintable(problem));
}

void tst_XmlTree::theFirstOfANameIsFoundAtAnyDepth()
{
    const Result<QDomDocument> document =
        XmlTree::read("<a><b><c n='1'/></b><c n='2'><a n='3'/></c><b n='4'/></a>");
    QVERIFY(document);
    const QStringList names{QStringLiteral("c"), QStringLiteral("missing"), QStringLiteral("a"),
                            QStringLiteral("b")};
    const QVector<QDomElement> found = XmlTree::firstNamed(document->documentElement(), names);
    QCOMPARE(found.size(), names.size());
    QCOMPARE(found.at(0).attribute(QStringLiteral("n")), QStringLiteral("1"));
    QVERIFY(found.at(1).isNull());
    QCOMPARE(found.at(2).attribute(QStringLiteral("n")), QStringLiteral("3"));
    QVERIFY(!found.at(3).isNull() && !found.at(3).hasAttribute(QStringLiteral("n")));
}

void tst_XmlTree::elementsHaveThePlacesOfTheirTags()
{
    XmlPlaces places;
    const Result<QDomDocument> document = XmlTree::read("<a>\n  \xc3\xa9<b/>\n\n<c x='\n'/></a>", places);
    QVERIFY(document);
    const QDomElement root = document->documentElement();
    const auto placeOf = [&](const QDomElement &element) { return places.of(element).text(); };
    QCOMPARE(placeOf(root), QStringLiteral("line 1, column 1"));
    QCOMPARE(placeOf(root.firstChildElement()), QStringLiteral("line 2, column 4"));
    QCOMPARE(placeOf(root.lastChildElement()), QStringLiteral("line 4, column 1"));
    QVERIFY(!places.of(QDomDocument().createElement(QStringLiteral("a"))).isKnown());
}

QTEST_GUILESS_MAIN(tst_XmlTree)
#include "tst_XmlTree.moc"
