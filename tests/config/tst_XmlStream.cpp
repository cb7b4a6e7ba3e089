// SPDX-License-Identifier: Apache-2.0
#include "config/XmlStream.h"

#include "tests/support/ProblemText.h"

#include <QtTest>

namespace {

using XmlStream::Attribute;

QByteArray nested(int depth)
{
    return QByteArray("<a>").repeated(depth) + QByteArray("</a>").repeated(depth);
}

QByteArray siblings(int count, const QByteArray &sibling = "<a/>")
{
    return "<r>" + sibling.repeated(count - 1) + "</r>";
}

QByteArray attributes(int count)
{
    QByteArray xml = "<r";
    for (int i = 0; i < count; ++i)
        xml += " a" + QByteArray::number(i) + "=''";
    return xml + "/>";
}

QByteArray utf16(const QString &text, bool bigEndian)
{
    QByteArray bytes;
    for (const QChar c : text) {
        const char high = char(c.unicode() >> 8);
        const char low = char(c.unicode() & 0xff);
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    }
    return bytes;
}

/// Writes down what it is given, one word for each piece.
class Notes : public XmlStream::Handler
{
public:
    QByteArrayList words;
    QByteArray refused; ///< the word at which this handler is not content
    bool acceptsDocumentType = false;

    Result<> declaration(const QString &version, const QString &encoding, bool standalone) override
    {
        return note("xml " + version.toUtf8() + ' ' + encoding.toUtf8() + (standalone ? " alone" : ""));
    }
    Result<> documentType(const QString &name) override
    {
        return acceptsDocumentType ? note("doctype " + name.toUtf8()) : Handler::documentType(name);
    }
    Result<> startElement(const QString &name, const QVector<Attribute> &attributes) override
    {
        QByteArray word = '<' + name.toUtf8();
        for (const Attribute &attribute : attributes)
            word += ' ' + attribute.name.toUtf8() + '=' + attribute.value.toUtf8();
        return note(word);
    }
    Result<> endElement() override { return note(">"); }
    Result<> text(const QString &text) override { return note("T" + text.toUtf8()); }
    Result<> comment(const QString &text) override { return note('!' + text.toUtf8()); }
    Result<> processingInstruction(const QString &target, const QString &data) override
    {
        return note('?' + target.toUtf8() + ' ' + data.toUtf8());
    }

private:
    Result<> note(const QByteArray &word)
    {
        words += word;
        return word == refused ? Problem{{}, QStringLiteral("not this")} : Result<>();
    }
};

} // namespace

class tst_XmlStream : public QObject
{
    Q_OBJECT

private slots:
    void acceptsOrRefuses_data();
    void acceptsOrRefuses();
    void aByteMoreThanTheLimitIsRefused();
    void piecesComeInTheirOrder();
    void textComesAtOnce();
    void aProblemOfTheHandlerEndsTheReading();
    void aDocumentTypeIsTheHandlersDecision();
    void referencesThatNothingDeclaresAreRefusedBehindADocumentType();
    void aByteOrderMarkWinsOverTheDeclaration();
    void encodingsAreKnownByTheirOtherNames_data();
    void encodingsAreKnownByTheirOtherNames();
    void whatIsNoCharacterOfTheEncodingIsRefused();
};

void tst_XmlStream::acceptsOrRefuses_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("problem"); // empty: accepted
    const QString none;
    const QByteArray longest(XmlStream::maximumNameBytes, 'n');
    QTest::newRow("plain") << QByteArray("<a b=\"c\">text</a>") << none;
    QTest::newRow("declaration, comment, line ends")
        << QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<!-- x -->\t<a/>\n") << none;
    QTest::newRow("white space by reference") << QByteArray("<a b=\"&#10;&#9;\"/>") << none;
    QTest::newRow("prefix without a namespace") << QByteArray("<a b:c=\"d\"/>") << none;
    QTest::newRow("deepest allowed") << nested(XmlStream::maximumDepth) << none;
    QTest::newRow("one too deep") << nested(XmlStream::maximumDepth + 1) << QStringLiteral("nested deeper");
    QTest::newRow("100,000 deep") << nested(100000) << QStringLiteral("nested deeper");
    QTest::newRow("most nodes") << siblings(XmlStream::maximumNodes) << none;
    QTest::newRow("too many nodes") << siblings(XmlStream::maximumNodes + 1) << QStringLiteral("more than");
    QTest::newRow("most attributes in all") << siblings(XmlStream::maximumNodes / 2, "<a b=''/>") << none;
    QTest::newRow("too many attributes in all")
        << siblings(XmlStream::maximumNodes / 2 + 2, "<a b=''/>") << QStringLiteral("more than");
    QTest::newRow("too many comments")
        << siblings(XmlStream::maximumNodes + 1, "<!---->") << QStringLiteral("more than");
    QTest::newRow("too many instructions")
        << siblings(XmlStream::maximumNodes + 1, "<?p?>") << QStringLiteral("more than");
    QTest::newRow("too many CDATA sections")
        << siblings(XmlStream::maximumNodes + 1, "<![CDATA[]]>") << QStringLiteral("more than");
    QTest::newRow("most attributes in one element") << attributes(XmlStream::maximumAttributes) << none;
    QTest::newRow("one attribute too many in an element")
        << attributes(XmlStream::maximumAttributes + 1) << QStringLiteral("attributes in one element");
    QTest::newRow("longest names") << "<" + longest + " " + longest + "=''><?" + longest + "?></" + longest +
                                          ">"
                                   << none;
    QTest::newRow("element name too long") << "<n" + longest + "/>" << QStringLiteral("name is longer");
    QTest::newRow("attribute name too long")
        << "<a n" + longest + "=''/>" << QStringLiteral("name is longer");
    QTest::newRow("target too long") << "<a><?n" + longest + "?></a>" << QStringLiteral("name is longer");
    QTest::newRow("document type") << QByteArray("<!DOCTYPE a><a/>") << QStringLiteral("document type");
    QTest::newRow("entity bomb") << QByteArray(
                                        "<!DOCTYPE a [<!ENTITY b \"bb\"><!ENTITY c \"&b;&b;\">]><a>&c;</a>")
                                 << QStringLiteral("document type");
    QTest::newRow("unknown entity") << QByteArray("<a>&b;</a>") << QStringLiteral("line 1");
    QTest::newRow("empty") << QByteArray() << QStringLiteral("line 1");
    QTest::newRow("not XML") << QByteArray("hello") << QStringLiteral("line 1");
    QTest::newRow("truncated") << QByteArray("<a><b>\n</b>") << QStringLiteral("line 2");
    QTest::newRow("two roots") << QByteArray("<a/><b/>") << QStringLiteral("line 1");
    QTest::newRow("the same attribute twice") << QByteArray("<a b='' b=''/>") << QStringLiteral("line 1");
    QTest::newRow("NUL in text") << QByteArray("<a>x\0y</a>", 10) << QStringLiteral("line 1");
    QTest::newRow("NUL in a value") << QByteArray("<a b=\"x\0y\"/>", 12) << QStringLiteral("line 1");
    QTest::newRow("escape in text") << QByteArray("<a>\x1b</a>") << QStringLiteral("line 1");
    QTest::newRow("escape in a value") << QByteArray("<a b=\"\x1b\"/>") << QStringLiteral("line 1");
    QTest::newRow("control by reference") << QByteArray("<a>&#1;</a>") << QStringLiteral("line 1");
    QTest::newRow("half a pair by reference") << QByteArray("<a>&#xD83D;</a>") << QStringLiteral("line 1");
    QTest::newRow("beyond Unicode by reference")
        << QByteArray("<a>&#x110000;</a>") << QStringLiteral("line 1");
    QTest::newRow("noncharacter by reference") << QByteArray("<a>&#xFFFE;</a>") << QStringLiteral("line 1");
    QTest::newRow("noncharacter") << QByteArray("<a>\xef\xbf\xbe</a>") << QStringLiteral("line 1");
    QTest::newRow("half a pair in UTF-8") << QByteArray("<a>\xed\xa0\xbd</a>") << QStringLiteral("line 1");
    QTest::newRow("half a pair in UTF-16")
        << utf16(QStringLiteral("\ufeff<a>") + QChar(0xd83d) + QStringLiteral("b</a>"), false)
        << QStringLiteral("surrogate");
    QTest::newRow("half a pair in UTF-16, big-endian without a mark")
        << utf16(QStringLiteral("<a b='") + QChar(0xde00) + QStringLiteral("'/>"), true)
        << QStringLiteral("surrogate");
    for (const char *place :
         {"<a b='%'/>", "<a>%</a>", "<a><![CDATA[%]]></a>", "<a><!--%--></a>", "<a><?p %?></a>"})
        QTest::newRow(place) << QByteArray(place).replace('%', '\x7f') << QStringLiteral("control");
}

void tst_XmlStream::acceptsOrRefuses()
{
    QFETCH(QByteArray, xml);
    QFETCH(QString, problem);
    XmlStream::Handler handler;
    const Result<> result = XmlStream::read(xml, handler);
    QCOMPARE(bool(result), problem.isEmpty());
    const QString found = problemText(result);
    QVERIFY2(problem.isEmpty() ? found.isEmpty() : found.contains(problem), qPrintable(found));
}

void tst_XmlStream::aByteMoreThanTheLimitIsRefused()
{
    const QByteArray largest = "<a/>" + QByteArray(int(XmlStream::maximumBytes) - 4, ' ');
    XmlStream::Handler handler;
    QCOMPARE(problemText(XmlStream::read(largest, handler)), QString());
    QCOMPARE(problemText(XmlStream::read(largest + ' ', handler)),
             QStringLiteral("it is larger than 32 MiB"));
    XmlStream::Limits limits;
    limits.bytes = 4;
    limits.nodes = 1;
    QVERIFY(XmlStream::read("<a/>", handler, limits));
    QVERIFY(!XmlStream::read("<a/>\n", handler, limits));
}

void tst_XmlStream::piecesComeInTheirOrder()
{
    Notes notes;
    const Result<> result = XmlStream::read(
        "<?xml version='1.0' encoding='utf-8' standalone='yes'?><!--c--><a x:b='&#10;\n' c=''>"
        "t<?p d?><![CDATA[<&]]><b/></a>",
        notes);
    QCOMPARE(problemText(result), QString());
    QCOMPARE(notes.words, QByteArrayList({"xml 1.0 utf-8 alone", "!c", "<a x:b=\n  c=", "Tt", "?p d", "T<&",
                                          "<b", ">", ">"}));
}

void tst_XmlStream::textComesAtOnce()
{
    Notes notes;
    QVERIFY(XmlStream::read("<a>1\r\n2&lt;3&#128512;&amp;\r</a>", notes));
    QCOMPARE(notes.words, QByteArrayList({"<a", "T1\n2<3\xf0\x9f\x98\x80&\n", ">"}));
}

void tst_XmlStream::aProblemOfTheHandlerEndsTheReading()
{
    for (const char *refused : {"<b", "!c", "Tt", "?p "}) {
        Notes notes;
        notes.refused = refused;
        const QString error = problemText(XmlStream::read("<a>\n<?p?><!--c--><b/>t</a>", notes));
        QCOMPARE(notes.words.last(), QByteArray(refused));
        QVERIFY2(error.startsWith(QStringLiteral("line 2, column ")), qPrintable(error));
        QVERIFY2(error.endsWith(QStringLiteral(": not this")), qPrintable(error));
    }
}

void tst_XmlStream::aDocumentTypeIsTheHandlersDecision()
{
    Notes notes;
    QVERIFY(!XmlStream::read("<!DOCTYPE a><a/>", notes));
    QCOMPARE(notes.words, QByteArrayList());
    notes.acceptsDocumentType = true;
    QVERIFY(XmlStream::read("<!DOCTYPE a PUBLIC '-//x' 'file:///etc/passwd'><a/>", notes));
    QCOMPARE(notes.words, QByteArrayList({"doctype a", "<a", ">"}));
    QString error = problemText(XmlStream::read("<!DOCTYPE a [<!ATTLIST a b CDATA 'c'>]><a/>", notes));
    QVERIFY2(error.contains(QStringLiteral("declares entities")), qPrintable(error));
    const QByteArray longest(XmlStream::maximumNameBytes, 'n');
    QVERIFY(XmlStream::read("<!DOCTYPE " + longest + "><a/>", notes));
    error = problemText(XmlStream::read("<!DOCTYPE n" + longest + "><a/>", notes));
    QVERIFY2(error.contains(QStringLiteral("name is longer")), qPrintable(error));
}

void tst_XmlStream::referencesThatNothingDeclaresAreRefusedBehindADocumentType()
{
    const QByteArray type = "<!DOCTYPE a SYSTEM 'a.dtd'>";
    for (const char *xml : {"<a>&nbsp;</a>", "<a b='&nbsp;'/>", "<a b='&lt;&ltx;'/>"}) {
        Notes notes;
        notes.acceptsDocumentType = true;
        const QString error = problemText(XmlStream::read(type + xml, notes));
        QVERIFY2(error.contains(QStringLiteral("nothing declares")), qPrintable(error));
    }
    Notes notes;
    notes.acceptsDocumentType = true;
    QVERIFY(XmlStream::read(type + "<a b='&lt;&gt;&amp;&quot;&apos;&#65;&#x42;'/>", notes));
    QCOMPARE(notes.words.at(1), QByteArray("<a b=<>&\"'AB"));
}

void tst_XmlStream::aByteOrderMarkWinsOverTheDeclaration()
{
    const QString declaration = QStringLiteral("<?xml version='1.0' encoding='ISO-8859-1'?><a>\u00e9</a>");
    const QByteArray utf8 = "\xef\xbb\xbf" + declaration.toUtf8();
    for (const QByteArray &xml : {utf8, utf16(QChar(0xfeff) + declaration, true), declaration.toLatin1()}) {
        Notes notes;
        QCOMPARE(problemText(XmlStream::read(xml, notes)), QString());
        QCOMPARE(notes.words.at(2), QByteArray("T\xc3\xa9"));
    }
}

void tst_XmlStream::encodingsAreKnownByTheirOtherNames_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("utf8");
    const QByteArray text = "\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80";
    for (const auto *name : {"utf8", "UTF8", "utf_8", "utf-8"})
        QTest::newRow(name) << text << text;
    for (const auto *name : {"latin1", "Latin-1", "l1", "iso8859-1", "ISO_8859-1", "iso-ir-100", "IBM819",
                             "cp819", "csISOLatin1", "iso-8859-1"})
        QTest::newRow(name) << QByteArray("\xa0\xe4\xff") << QByteArray("\xc2\xa0\xc3\xa4\xc3\xbf");
    for (const auto *name : {"windows-1252", "Windows-1252", "cp1252"})
        QTest::newRow(name) << QByteArray("\x80\x8a\x9f\xe4")
                            << QByteArray("\xe2\x82\xac\xc5\xa0\xc5\xb8\xc3\xa4");
}

void tst_XmlStream::encodingsAreKnownByTheirOtherNames()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, utf8);
    const QByteArray name = QTest::currentDataTag();
    for (const QByteArray &declared :
         {QByteArray("='" + name + '\''), QByteArray("\n=\n\"" + name + "\" standalone='yes'")}) {
        Notes notes;
        const Result<> result =
            XmlStream::read("<?xml version='1.0' encoding" + declared + "?><a>" + bytes + "</a>", notes);
        QCOMPARE(problemText(result), QString());
        QVERIFY(notes.words.at(0).startsWith(QByteArray("xml 1.0 " + name)));
        QCOMPARE(notes.words.at(2), 'T' + utf8);
    }
}

void tst_XmlStream::whatIsNoCharacterOfTheEncodingIsRefused()
{
    for (const auto *xml :
         {"<?xml version='1.0' encoding='utf8'?><a>\xe4</a>",
          "<?xml version='1.0' encoding='cp1252'?><a>\x81</a>", "<?xml version='1.0' encoding='latin9'?><a/>",
          "<?xml version='1.0' encoding='windows-1251'?><a/>"}) {
        Notes notes;
        QVERIFY2(!XmlStream::read(xml, notes), xml);
    }
}

QTEST_GUILESS_MAIN(tst_XmlStream)
#include "tst_XmlStream.moc"
