// SPDX-License-Identifier: Apache-2.0
#include "hosttools/base/Error.h"
#include "hosttools/base/XmlReader.h"

#include <QTest>

using namespace FlatPkg;

/// The reader of tables of contents and Distributions.
class tst_XmlReader : public QObject
{
    Q_OBJECT

private slots:
    void walksThroughElements();
    void readsText_data();
    void readsText();
    void readsAttributes();
    void saysWhichEncodingIsDeclared();
    void knowsEncodingsByTheirOtherNames_data();
    void knowsEncodingsByTheirOtherNames();
    void refusesElementsWhereTextBelongs();
    void refusesWhatIsNotWellFormed_data();
    void refusesWhatIsNotWellFormed();
    void refusesDefinitions_data();
    void refusesDefinitions();
    void takesWhatIsAtALimitAndNothingBeyond_data();
    void takesWhatIsAtALimitAndNothingBeyond();
    void takesTextOfAnyLength();
};

namespace {

/// What is wrong with a document, empty when it can be read to its end.
QByteArray problemOf(const QByteArray &document)
{
    try {
        XmlReader(document).readToEnd();
        return QByteArray();
    } catch (const Error &error) {
        return error.message();
    }
}

QByteArray nested(int levels)
{
    return QByteArray("<a>").repeated(levels) + QByteArray("</a>").repeated(levels);
}

QByteArray withAttributes(int count)
{
    QByteArray document = "<a";
    for (int i = 0; i < count; ++i)
        document += " n" + QByteArray::number(i) + "='v'";
    return document + "/>";
}

} // namespace

void tst_XmlReader::walksThroughElements()
{
    const QByteArray document = "<?xml version='1.0'?><!-- c --><r><a/><x:b><c/><c>t</c></x:b>t<d/></r>";
    XmlReader xml(document);
    QByteArrayList names;
    QVERIFY(xml.readNextStartElement());
    QCOMPARE(xml.name(), QByteArray("r"));
    while (xml.readNextStartElement()) {
        names.append(xml.name());
        xml.skipCurrentElement();
    }
    QCOMPARE(names, QByteArrayList({"a", "b", "d"}));
    QVERIFY(!xml.readNextStartElement());
}

void tst_XmlReader::readsText_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("plain") << QByteArray("<a> t </a>") << QByteArray(" t ");
    QTest::newRow("none") << QByteArray("<a/>") << QByteArray();
    QTest::newRow("references") << QByteArray("<a>&lt;&amp;&#65;&#x42;</a>") << QByteArray("<&AB");
    QTest::newRow("beyond 16 bits") << QByteArray("<a>&#128512;</a>") << QByteArray("\xF0\x9F\x98\x80");
    QTest::newRow("CDATA") << QByteArray("<a>1<![CDATA[<2>]]>3</a>") << QByteArray("1<2>3");
    QTest::newRow("comments") << QByteArray("<a>1<!-- 2 -->3<?p 4?></a>") << QByteArray("13");
    QTest::newRow("line ends") << QByteArray("<a>1\r\n2\r3</a>") << QByteArray("1\n2\n3");
    QTest::newRow("a byte order mark") << QByteArray("\xEF\xBB\xBF<a>1</a>") << QByteArray("1");
    QTest::newRow("Latin-1") << QByteArray("<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE4</a>")
                             << QByteArray("\xC3\xA4");
    QTest::newRow("UTF-16") << QByteArray("\xFF\xFE<\0a\0>\0\xE4\0<\0/\0a\0>\0", 18)
                            << QByteArray("\xC3\xA4");
}

void tst_XmlReader::readsText()
{
    QFETCH(QByteArray, document);
    QFETCH(QByteArray, text);
    for (const auto read : {&XmlReader::readText, &XmlReader::readAllText}) {
        XmlReader xml(document);
        QVERIFY(xml.readNextStartElement());
        QCOMPARE((xml.*read)(), text);
        xml.readToEnd();
    }
}

void tst_XmlReader::readsAttributes()
{
    const QByteArray document = "<a one='1&#10;&lt;' two='a\nb\tc'/>";
    XmlReader xml(document);
    QVERIFY(xml.readNextStartElement());
    QCOMPARE(xml.attribute("one"), QByteArray("1\n<"));
    QCOMPARE(xml.attribute("two"), QByteArray("a b c"));
    QCOMPARE(xml.attribute("three"), QByteArray());
}

void tst_XmlReader::saysWhichEncodingIsDeclared()
{
    const QByteArray declared = "<?xml version='1.0' encoding='us-ascii'?><a/>";
    XmlReader withEncoding(declared);
    QVERIFY(withEncoding.readNextStartElement());
    QCOMPARE(withEncoding.encoding(), QByteArray("us-ascii"));
    const QByteArray undeclared = "<?xml version='1.0'?><a/>";
    XmlReader without(undeclared);
    QVERIFY(without.readNextStartElement());
    QCOMPARE(without.encoding(), QByteArray());
}

void tst_XmlReader::knowsEncodingsByTheirOtherNames_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("utf8");
    QTest::newRow("utf8") << QByteArray("\xf0\x9f\x98\x80") << QByteArray("\xf0\x9f\x98\x80");
    QTest::newRow("UTF_8") << QByteArray("\xc3\xa4") << QByteArray("\xc3\xa4");
    for (const auto *name : {"latin1", "ISO_8859-1", "iso8859-1", "L1", "cp819"})
        QTest::newRow(name) << QByteArray("\xe4") << QByteArray("\xc3\xa4");
    for (const auto *name : {"windows-1252", "CP1252"})
        QTest::newRow(name) << QByteArray("\x80\x9f") << QByteArray("\xe2\x82\xac\xc5\xb8");
}

void tst_XmlReader::knowsEncodingsByTheirOtherNames()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, utf8);
    const QByteArray start =
        QByteArray("<?xml version='1.0' encoding = \"") + QTest::currentDataTag() + "\"?>";
    const QByteArray document = start + "<a>" + bytes + "</a>";
    XmlReader reader(document);
    QVERIFY(reader.readNextStartElement());
    QCOMPARE(reader.readText(), utf8);
    QVERIFY(!problemOf(start.chopped(3) + "x\"?><a/>").isEmpty());
}

void tst_XmlReader::refusesElementsWhereTextBelongs()
{
    const QByteArray document = "<a>1<b/></a>";
    XmlReader strict(document, "the table ");
    QVERIFY(strict.readNextStartElement());
    try {
        strict.readText();
        QFAIL("the element was taken");
    } catch (const Error &error) {
        QVERIFY2(error.message().startsWith("the table is not well-formed: "), error.what());
    }
}

void tst_XmlReader::refusesWhatIsNotWellFormed_data()
{
    QTest::addColumn<QByteArray>("document");
    for (const auto *document :
         {"", " ", "text", "<a>", "<a></b>", "<a/><b/>", "<a/>text", "<a b='1' b='2'/>", "<a b=1/>",
          "<a>&none;</a>", "<a>&#0;</a>", "<a>&#xD800;</a>", "<a>&#xFFFE;</a>", "<a>\x01</a>", "<a>\xFF</a>",
          "<a>\xEF\xBF\xBF</a>", "<a b='<'/>", "<a><!-- -- --></a>",
          "<?xml version='1.0' encoding='none-such'?><a/>"})
        QTest::newRow(document) << QByteArray(document);
    QTest::newRow("a NUL") << QByteArray("<a>\0</a>", 8);
}

void tst_XmlReader::refusesWhatIsNotWellFormed()
{
    QFETCH(QByteArray, document);
    const QByteArray problem = problemOf(document);
    QVERIFY2(problem.startsWith("is not well-formed: line 1: "), problem.constData());
}

void tst_XmlReader::refusesDefinitions_data()
{
    QTest::addColumn<QByteArray>("document");
    for (const auto *document : {"<!DOCTYPE a><a/>", "<!DOCTYPE a SYSTEM 'file:///etc/passwd'><a/>",
                                 "<!DOCTYPE a [<!ENTITY e 'e'>]><a>&e;</a>", "<!DOCTYPE a [ broken"})
        QTest::newRow(document) << QByteArray(document);
}

void tst_XmlReader::refusesDefinitions()
{
    QFETCH(QByteArray, document);
    QCOMPARE(problemOf(document), QByteArray("has a document type definition"));
}

void tst_XmlReader::takesWhatIsAtALimitAndNothingBeyond_data()
{
    QTest::addColumn<QByteArray>("allowed");
    QTest::addColumn<QByteArray>("beyond");
    QTest::addColumn<QByteArray>("problem");
    const QByteArray name(1024, 'n');
    QTest::newRow("levels") << nested(256) << nested(257) << QByteArray("is nested too deeply");
    QTest::newRow("elements") << "<a>" + QByteArray("<b/>").repeated(199999) + "</a>"
                              << "<a>" + QByteArray("<b/>").repeated(200000) + "</a>"
                              << QByteArray("has too many elements");
    QTest::newRow("attributes") << withAttributes(256) << withAttributes(257)
                                << QByteArray("has an element with too many attributes");
    QTest::newRow("name of an element") << "<" + name + "/>"
                                        << "<" + name + "n/>" << QByteArray("has a name that is too long");
    QTest::newRow("name of an attribute")
        << "<a " + name + "='1'/>"
        << "<a " + name + "n='1'/>" << QByteArray("has a name that is too long");
    QTest::newRow("value") << "<a b='" + QByteArray(1000 * 1000, 'v') + "'/>"
                           << "<a b='" + QByteArray(2000 * 1000, 'v') + "'/>"
                           << QByteArray("has a tag or a comment that is too long");
}

void tst_XmlReader::takesWhatIsAtALimitAndNothingBeyond()
{
    QFETCH(QByteArray, allowed);
    QFETCH(QByteArray, beyond);
    QFETCH(QByteArray, problem);
    QCOMPARE(problemOf(allowed), QByteArray());
    QCOMPARE(problemOf(beyond), problem);
}

void tst_XmlReader::takesTextOfAnyLength()
{
    constexpr int count = 4 * 1024 * 1024;
    const QByteArray document = "<a>" + QByteArray("&lt;").repeated(count) + "</a>";
    XmlReader xml(document);
    QVERIFY(xml.readNextStartElement());
    QCOMPARE(xml.readText(), QByteArray(count, '<'));
}

QTEST_GUILESS_MAIN(tst_XmlReader)
#include "tst_XmlReader.moc"
