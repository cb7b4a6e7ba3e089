// SPDX-License-Identifier: Apache-2.0
#include "config/KeptElement.h"
#include "tests/profile/CocoaCalls.h"
#include "tests/profile/LogLines.h"
#include "tests/profile/ProfileSamples.h"

#include <QDomDocument>
#include <QtTest>

using namespace ProfileSamples;

namespace {

/// The value element of the property list that the element converts to.
QDomElement converted(const QByteArray &xml)
{
    QDomDocument source;
    source.setContent(xml);
    QDomDocument list;
    list.setContent(CocoaCalls::dictionaryOf(source.documentElement()));
    static QList<QDomDocument> kept; // an element does not keep its document alive
    kept << list;
    return list.documentElement().firstChildElement();
}

QDomElement valueOf(const QDomElement &dictionary, const QString &key)
{
    for (QDomElement child = dictionary.firstChildElement(QStringLiteral("key")); !child.isNull();
         child = child.nextSiblingElement(QStringLiteral("key"))) {
        if (child.text() == key)
            return child.nextSiblingElement();
    }
    return {};
}

QDomElement rebuilt(const QByteArray &dictionary)
{
    return CocoaCalls::elementOf(QStringLiteral("RibbonUI"), propertyList(dictionary));
}

} // namespace

class tst_PropertyListBridge : public QObject
{
    Q_OBJECT

private slots:
    void anElementWithNothingInItIsAnEmptyDictionary()
    {
        const QDomElement dictionary = converted("<RibbonUI/>");
        QCOMPARE(dictionary.tagName(), QStringLiteral("dict"));
        QVERIFY(dictionary.firstChildElement().isNull());
    }

    void attributesBecomeStrings()
    {
        const QDomElement dictionary = converted("<RibbonUI a='1' b='&lt;x&gt; &amp; &quot;'/>");
        QCOMPARE(valueOf(dictionary, QStringLiteral("a")).tagName(), QStringLiteral("string"));
        QCOMPARE(valueOf(dictionary, QStringLiteral("a")).text(), QStringLiteral("1"));
        QCOMPARE(valueOf(dictionary, QStringLiteral("b")).text(), QStringLiteral("<x> & \""));
    }

    void threeCategoriesAreAnArrayAndComeBackAsThree()
    {
        const QByteArray xml = "<RibbonUI><Category n='1'/><Category n='2'/><Category n='3'/></RibbonUI>";
        const QDomElement list = valueOf(converted(xml), QStringLiteral("Category"));
        QCOMPARE(list.tagName(), QStringLiteral("array"));
        QCOMPARE(list.elementsByTagName(QStringLiteral("dict")).count(), 3);

        QDomDocument document;
        document.setContent(xml);
        const QDomElement back = CocoaCalls::elementOf(QStringLiteral("RibbonUI"),
                                                       CocoaCalls::dictionaryOf(document.documentElement()));
        QCOMPARE(elementText(back), elementText(document.documentElement()));
    }

    void oneCategoryIsAPlainDictionary()
    {
        const QDomElement dictionary = converted("<RibbonUI><Category n='1'/></RibbonUI>");
        QCOMPARE(valueOf(dictionary, QStringLiteral("Category")).tagName(), QStringLiteral("dict"));
    }

    void textContentComesBackAsAnAttributeNamedText()
    {
        QDomDocument document;
        document.setContent(QByteArray("<RibbonUI>hello</RibbonUI>"));
        const QByteArray dictionary = CocoaCalls::dictionaryOf(document.documentElement());
        const QDomElement back = CocoaCalls::elementOf(QStringLiteral("RibbonUI"), dictionary);
        QCOMPARE(back.attribute(QStringLiteral("text")), QStringLiteral("hello"));
        QVERIFY(!back.hasChildNodes());
    }

    void aLaterTextOverwritesAnEarlierOne()
    {
        const QDomElement dictionary = converted("<RibbonUI>one<a/>two</RibbonUI>");
        QCOMPARE(valueOf(dictionary, QStringLiteral("text")).text(), QStringLiteral("two"));
    }

    void commentsInstructionsAndBlanksAreSkipped()
    {
        const QDomElement dictionary = converted("<RibbonUI> \n<!-- no --><?php no?> </RibbonUI>");
        QVERIFY(dictionary.firstChildElement().isNull());
    }

    void aStringInAnArrayBecomesAChildWithText()
    {
        const QDomElement element = rebuilt(dictionary({"Item", array(string("one") + string("two"))}));
        QCOMPARE(element.childNodes().count(), 2);
        QCOMPARE(element.firstChildElement(QStringLiteral("Item")).text(), QStringLiteral("one"));
        QCOMPARE(element.lastChildElement(QStringLiteral("Item")).text(), QStringLiteral("two"));
    }

    void otherTypesAreSkipped()
    {
        const QDomElement element = rebuilt(dictionary(
            {"i", "<integer>1</integer>", "r", "<real>1.5</real>", "t", "<true/>", "d",
             "<date>2026-01-02T03:04:05Z</date>", "x", "<data>AAAA</data>", "kept", string("yes")}));
        QCOMPARE(element.attributes().count(), 1);
        QCOMPARE(element.attribute(QStringLiteral("kept")), QStringLiteral("yes"));
        QVERIFY(!element.hasChildNodes());
    }

    void aKeyThatNoXmlNameCanBeIsSkipped()
    {
        const QDomElement element =
            rebuilt(dictionary({"a b", string("x"), "1", string("x"), "", string("x"), "&lt;x", string("x"),
                                "-y", dictionary({}), "fine", string("x")}));
        QCOMPARE(elementText(element), QStringLiteral("<RibbonUI fine=\"x\"/>"));
    }

    void namesWithAColonComeBack()
    {
        const QDomElement element = rebuilt(dictionary(
            {"xmlns:x", string("urn:x"), "x:id", string("1"), "x:Item", dictionary({"x:y", string("2")})}));
        QCOMPARE(elementText(element),
                 QStringLiteral("<RibbonUI x:id=\"1\" xmlns:x=\"urn:x\"><x:Item x:y=\"2\"/></RibbonUI>"));
    }

    void nilGivesAnEmptyElementThatIsNotNull()
    {
        const LogLines log;
        const QDomElement element = CocoaCalls::elementOf(QStringLiteral("RibbonUI"), QByteArray());
        QVERIFY(!element.isNull());
        QCOMPARE(elementText(element), QStringLiteral("<RibbonUI/>"));
        QVERIFY2(log.has(QStringLiteral("debug [debug] ==== QDomElementFromNSDictionary :RibbonUI element:")),
                 qPrintable(log.all()));
    }
};

QTEST_GUILESS_MAIN(tst_PropertyListBridge)
#include "tst_PropertyListBridge.moc"
