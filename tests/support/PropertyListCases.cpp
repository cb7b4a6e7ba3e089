// SPDX-License-Identifier: Apache-2.0
#include "tests/support/PropertyListCases.h"

#include <QTest>

namespace {

const QByteArray declaration("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
const QByteArray documentType("<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                              "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n");
const QByteArray bundle("com.pelix-software.Pelix.PDF.Editor");

QByteArray entry(const QByteArray &key, const QByteArray &value)
{
    return "<key>" + key + "</key>" + value;
}

QByteArray text(const QByteArray &text)
{
    return "<string>" + text + "</string>";
}

/// The profile's dictionary; `odd` stands in the preference item behind the list of domains.
QByteArray dictionaryWith(const QByteArray &value, const QByteArray &odd = {})
{
    const QByteArray item = entry("Text", text("LoginDomainList")) + entry("String", value) + odd;
    const QByteArray items =
        "<array><dict>" + entry("Preference", "<dict>" + item + "</dict>") + "</dict></array>";
    const QByteArray payload = entry("PayloadIdentifier", text(bundle)) + entry("Preferences", items);
    return "<dict>" + entry("PayloadType", text("Configuration")) + entry("PayloadIdentifier", text("a.b")) +
           entry("PayloadUUID", text("U")) +
           entry("PayloadContent", "<array><dict>" + payload + "</dict></array>") + "</dict>";
}

QByteArray profileOf(const QByteArray &dictionary)
{
    return declaration + documentType + "<plist version=\"1.0\">" + dictionary + "</plist>\n";
}

QByteArray inUtf16(const QByteArray &utf8, bool bigEndian)
{
    QByteArray bytes = bigEndian ? "\xfe\xff" : "\xff\xfe";
    for (const QChar c : QString::fromUtf8(utf8)) {
        const char high = char(c.unicode() >> 8);
        const char low = char(c.unicode() & 0xff);
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    }
    return bytes;
}

class Rows
{
public:
    void refusedValue(const QByteArray &name, const QByteArray &value)
    {
        refused(name, profileOf(dictionaryWith(value)));
    }
    void readValue(const QByteArray &name, const QByteArray &value, const char *domains)
    {
        read(name, profileOf(dictionaryWith(value)), domains);
    }
    void refusedEntry(const QByteArray &name, const QByteArray &odd)
    {
        refused(name, profileOf(dictionaryWith(text("x"), odd)));
    }
    void readEntry(const QByteArray &name, const QByteArray &odd)
    {
        read(name, profileOf(dictionaryWith(text("x"), odd)), "x");
    }
    void refused(const QByteArray &name, const QByteArray &profile, bool isUtf8 = true)
    {
        m_rows.append({name, profile, false, {}, isUtf8});
    }
    void read(const QByteArray &name, const QByteArray &profile, const char *domains, bool isUtf8 = true)
    {
        m_rows.append({name, profile, true, QString::fromUtf8(domains), isUtf8});
    }

    const QList<PropertyListCase> &all() const { return m_rows; }

private:
    QList<PropertyListCase> m_rows;
};

QByteArray integer(const QByteArray &text)
{
    return "<integer>" + text + "</integer>";
}

void addIntegers(Rows &rows)
{
    for (const auto *bad :
         {"abc", "42q", "", " ", "1 ", "0x", "0xg", "ff", "--1", "+-1", "1.5", "1e3", "1_000"})
        rows.refusedValue(QByteArray("integer \"") + bad + '"', integer(bad));
    rows.refusedValue("empty integer element", "<integer/>");
    rows.refusedValue("integer beyond 64 bits", integer("18446744073709551616"));
    rows.refusedValue("negative integer beyond 64 bits", integer("-9223372036854775809"));
    rows.refusedValue("hexadecimal integer beyond 64 bits", integer("0x10000000000000000"));
    rows.refusedValue("negative hexadecimal integer beyond 64 bits", integer("-0x8000000000000001"));
    rows.readValue("hexadecimal integer", integer("0x1"), "1");
    rows.readValue("hexadecimal integer in capitals", integer("0X1F"), "31");
    rows.readValue("negative hexadecimal integer", integer("-0x10"), "-16");
    rows.readValue("largest hexadecimal integer", integer("0xffffffffffffffff"), "18446744073709551615");
    rows.readValue("integer with a plus", integer("+5"), "5");
    rows.readValue("integer behind a blank", integer(" \n7"), "7");
    rows.readValue("integer with a blank behind its sign", integer("- 7"), "-7");
    rows.readValue("decimal integer with zeros in front", integer("010"), "10");
    rows.readValue("nothing but zeros", integer("-000"), "0");
    rows.readValue("smallest integer", integer("-9223372036854775808"), "-9223372036854775808");
    rows.readValue("2^63", integer("9223372036854775808"), "9223372036854775808");
    rows.readValue("largest integer", integer("18446744073709551615"), "18446744073709551615");
}

void addOtherScalars(Rows &rows)
{
    for (const auto *bad : {"", "abc", "1.5x", "0x1p3", "1,5", ".", "1e", "- 1"})
        rows.refusedValue(QByteArray("real \"") + bad + '"', QByteArray("<real>") + bad + "</real>");
    rows.refusedValue("empty real element", "<real/>");
    rows.readValue("real", "<real>-2.5</real>", "-2.5");
    rows.readValue("real with an exponent", "<real>1e3</real>", "1000");
    rows.readValue("real without a digit in front", "<real>.5</real>", "0.5");
    for (const auto *good : {"nan", "NaN", "inf", "+Infinity", "-INF"})
        rows.readEntry(QByteArray("real \"") + good + '"',
                       entry("a", QByteArray("<real>") + good + "</real>"));
    for (const auto *bad : {"", "yesterday", "2026-01-02", "2026-01-02T03:04:05", "2026-01-02T03:04:05+01:00",
                            "2026-1-2T03:04:05Z", "2026-01-02T03:04:05.5Z", " 2026-01-02T03:04:05Z"})
        rows.refusedValue(QByteArray("date \"") + bad + '"', QByteArray("<date>") + bad + "</date>");
    rows.refusedValue("empty date element", "<date/>");
    rows.readValue("date", "<date>2026-01-02T03:04:05Z</date>", "");
    rows.readValue("date that no calendar has", "<date>2026-13-45T03:04:05Z</date>", "");
    rows.readValue("date before the first year", "<date>-0001-01-02T03:04:05Z</date>", "");
    rows.readValue("data", "<data>\n\tQU\n\tJD\n</data>", "");
    rows.readValue("data in two tags without any", "<data></data>", "");
    rows.refusedValue("empty data element", "<data/>");
    rows.readValue("data with other characters", "<data>!?</data>", "");
    rows.readValue("true", "<true/>", "1");
    rows.readValue("false in two tags", "<false></false>", "0");
    rows.refusedValue("text in true", "<true>x</true>");
    rows.refusedValue("blank in false", "<false> </false>");
}

void addTexts(Rows &rows)
{
    rows.readValue("empty text", "<string/>", "");
    rows.readValue("a key in place of a text", "<key>x</key>", "x");
    rows.readValue("predefined references", text("&lt;&gt;&amp;&apos;&quot;"), "<>&'\"");
    rows.readValue("numeric references", text("&#65;&#x42;&#228;&#128512;"), "AB\xc3\xa4\xf0\x9f\x98\x80");
    rows.readValue("CDATA", text("a<![CDATA[<b>&amp;]]>c"), "a<b>&amp;c");
    rows.readValue("blanks around a text", text(" a\tb "), " a\tb ");
    for (const auto *bad : {"&foo;", "&nbsp;", "&LT;", "&", "&amp", "&#xZZ;", "&#;", "&#0;", "&#x110000;"})
        rows.refusedValue(QByteArray("reference ") + bad, text(bad));
    rows.refusedValue("comment in a text", text("a<!-- b -->c"));
    rows.refusedValue("processing instruction in a text", text("a<?b c?>d"));
    rows.refusedValue("element in a text", text("a<true/>"));
    rows.refusedValue("unterminated CDATA", text("<![CDATA[a"));
    rows.refusedValue("control character", text("\x01"));
    rows.refusedValue("NUL", text(QByteArray("a\0b", 3)));
    rows.refusedValue("unterminated text", "<string>x");
    rows.refusedValue("text ended as another", "<string>x</key>");
}

void addContainers(Rows &rows)
{
    rows.refusedEntry("text in a dictionary", "stray");
    rows.refusedEntry("a reference in a dictionary", "&#65;");
    rows.refusedEntry("CDATA in a dictionary", "<![CDATA[x]]>");
    rows.refusedEntry("text between key and value", "<key>a</key>stray<true/>");
    rows.refusedEntry("text in an array", entry("a", "<array><true/>stray</array>"));
    rows.refusedEntry("a key without a value", "<key>a</key>");
    rows.refusedEntry("a key without a value in front of another", "<key>a</key><key>b</key><true/>");
    rows.refusedEntry("a value without a key", "<true/>");
    rows.refusedEntry("a value without a key behind another", entry("a", "<true/><true/>"));
    rows.refusedEntry("an unknown element", entry("a", "<foo/>"));
    rows.refusedEntry("an element in capitals", entry("a", "<Dict/>"));
    rows.refusedEntry("an element with a prefix", entry("a", "<p:dict xmlns:p=\"x\"/>"));
    rows.refusedEntry("an unknown element in place of a key", "<foo>a</foo><true/>");
    rows.refusedEntry("an unterminated array", entry("a", "<array>"));
    rows.refusedEntry("an array ended as a dictionary", entry("a", "<array></dict>"));
    rows.refusedEntry("an element without its bracket", entry("a", "<array"));
    rows.refusedEntry("an unterminated comment", "<!-- a");
    rows.readEntry("a key in an array", entry("a", "<array><key>b</key></array>"));
    rows.readEntry("a key for a value", "<key>a</key><key>b</key>");
    rows.readEntry("an empty key", entry("", "<true/>"));
    rows.readEntry("an empty key element", "<key/><true/>");
    rows.readEntry("empty containers", entry("a", "<array/>") + entry("b", "<dict></dict>"));
    rows.readEntry("a comment between elements", "<!-- a -->");
    rows.readEntry("a processing instruction between elements", "<?a b?>");
    rows.readEntry("attributes and blanks in tags", "<key a='b' >a</key ><true />");
}

void addDocuments(Rows &rows)
{
    const QByteArray value = dictionaryWith(text("\xc3\xa4"));
    const char *domains = "\xc3\xa4";
    const QByteArray list = "<plist version=\"1.0\">" + value + "</plist>";
    rows.read("no declaration", documentType + list, domains);
    rows.read("no document type", declaration + list, domains);
    rows.read("no plist element", declaration + value, domains);
    rows.read("white space in front", " \r\n\t" + profileOf(value), domains);
    rows.read("byte order mark", "\xef\xbb\xbf" + profileOf(value), domains);
    rows.read("comments around", declaration + "<!-- a -->" + list + "<!-- b -->", domains);
    rows.read("little-endian UTF-16", inUtf16(profileOf(value).replace("UTF-8", "UTF-16"), false), domains,
              false);
    rows.read("big-endian UTF-16", inUtf16(profileOf(value).replace("UTF-8", "UTF-16"), true), domains,
              false);
    rows.read("ISO 8859-1", profileOf(value).replace("UTF-8", "ISO-8859-1").replace("\xc3\xa4", "\xe4"),
              domains, false);
    rows.read("UTF-8 by another name", profileOf(value).replace("UTF-8", "utf8"), domains);
    rows.read("ISO 8859-1 by another name",
              profileOf(value).replace("UTF-8", "latin1").replace("\xc3\xa4", "\xe4"), domains, false);
    rows.read("Windows-1252", profileOf(dictionaryWith(text("\x80"))).replace("UTF-8", "windows-1252"),
              "\xe2\x82\xac", false);
    rows.refused("a byte that Windows-1252 does not have",
                 profileOf(dictionaryWith(text("\x81"))).replace("UTF-8", "windows-1252"), false);
    rows.refused("an unknown encoding", profileOf(value).replace("UTF-8", "FOO-8"));
    rows.refused("broken UTF-8", profileOf(value).replace("\xc3\xa4", "\xc3"), false);
    rows.refused("an empty plist element", declaration + "<plist version=\"1.0\"/>");
    rows.refused("a plist element without a value", profileOf(""));
    rows.refused("an extra object", profileOf(value + "<true/>"));
    rows.refused("the same object twice", profileOf(value + value));
    rows.refused("text in front of the object", profileOf("stray" + value));
    rows.refused("text behind the object", profileOf(value + "stray"));
    rows.refused("a second document", profileOf(value) + list);
    rows.refused("text behind the document", profileOf(value) + "stray");
    rows.refused("an unterminated comment in front", declaration + "<!-- a" + list);
    rows.refused("an unterminated comment behind", profileOf(value) + "<!-- a");
    rows.refused("an empty inline document type", declaration + "<!DOCTYPE plist []>" + list);
    rows.refused("an inline document type", declaration + "<!DOCTYPE plist [<!ENTITY e \"x\">]>" + list);
    rows.refused("an unterminated document type", declaration + "<!DOCTYPE plist " + list);
    rows.refused("another document", declaration + "<html><body/></html>");
}

} // namespace

QList<PropertyListCase> PropertyListCases::xml()
{
    Rows rows;
    addIntegers(rows);
    addOtherScalars(rows);
    addTexts(rows);
    addContainers(rows);
    addDocuments(rows);
    return rows.all();
}

void PropertyListCases::addRows(const QList<PropertyListCase> &cases)
{
    QTest::addColumn<QByteArray>("profile");
    QTest::addColumn<bool>("isRead");
    QTest::addColumn<QString>("domains");
    QTest::addColumn<bool>("isUtf8");
    for (const PropertyListCase &one : cases)
        QTest::newRow(one.name.constData()) << one.profile << one.isRead << one.domains << one.isUtf8;
}

QByteArray PropertyListCases::profileWith(const QByteArray &value)
{
    return profileOf(dictionaryWith(value));
}
