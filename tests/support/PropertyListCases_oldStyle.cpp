// SPDX-License-Identifier: Apache-2.0
#include "tests/support/PropertyListCases.h"

namespace {

/// The profile whose list of domains is the value; `odd` stands behind it, `end` behind everything.
QByteArray profileWith(const QByteArray &value, const QByteArray &odd = {}, const QByteArray &end = {})
{
    const QByteArray preference =
        "{ Preference = { Text = LoginDomainList; String = " + value + "; " + odd + "}; }";
    return "{ PayloadType = Configuration; PayloadIdentifier = a.b; PayloadUUID = U;\n"
           "  PayloadContent = ( { PayloadIdentifier = \"com.pelix-software.Pelix.PDF.Editor\";\n"
           "    Preferences = ( " +
           preference + " ); } ); }" + end;
}

class Rows
{
public:
    void read(const QByteArray &value, const char *domains)
    {
        readProfile("the value " + value, profileWith(value), domains);
    }
    void refused(const QByteArray &value) { refusedProfile("the value " + value, profileWith(value)); }
    void readEntry(const QByteArray &odd) { readProfile("the entry " + odd, profileWith("x", odd), "x"); }
    void refusedEntry(const QByteArray &odd) { refusedProfile("the entry " + odd, profileWith("x", odd)); }
    void readProfile(const QByteArray &name, const QByteArray &profile, const char *domains)
    {
        m_rows.append({name, profile, true, QString::fromUtf8(domains), true});
    }
    void refusedProfile(const QByteArray &name, const QByteArray &profile)
    {
        m_rows.append({name, profile, false, {}, true});
    }

    const QList<PropertyListCase> &all() const { return m_rows; }

private:
    QList<PropertyListCase> m_rows;
};

void addTexts(Rows &rows)
{
    rows.read("a_$/:.-Z9", "a_$/:.-Z9");
    rows.read("\"a b\"", "a b");
    rows.read("'a \"b\"'", "a \"b\"");
    rows.read("\"\"", "");
    rows.read("\"; } /* */ // <\"", "; } /* */ // <");
    rows.read("\"\xc3\xa4\xf0\x9f\x98\x80\"", "\xc3\xa4\xf0\x9f\x98\x80");
    rows.read("\"\\t\\\"\\\\\\q\"", "\t\"\\q");
    rows.read("\"\\101\\60\\0601\"", "A0"
                                     "01");
    rows.read("\"\\U00e4\\Ud83d\\Ude00\\U41z\"", "\xc3\xa4\xf0\x9f\x98\x80"
                                                 "Az");
    for (const auto *bad : {"\"a", "'a\"", "a b", "a@b", "\xc3\xa4", "a'b'", "\"a\"b", "", ",", "\\101"})
        rows.refused(bad);
}

void addContainers(Rows &rows)
{
    for (const auto *good :
         {"a = (); ", "a = (1); ", "a = (1,); ", "a = (1, (2, {}), <>); ", "a = {}; ", "a = {b;}; ",
          "a = {b = c; b = d;}; ", "a; ", "\"a b\"; ", "a = <>; ", "a = <0fA9>; ", "a = <0f a9\n00>; "})
        rows.readEntry(good);
    for (const auto *bad :
         {"a = ; ",        "= a; ",         "a = b ",        "a b; ",       "a = b;; ",   "; ",
          "a = (1,,2); ",  "a = (,); ",     "a = (,1); ",    "a = (1 2); ", "a = (1; ",   "a = {b}; ",
          "a = {b = c}; ", "a = {b = ;}; ", "a = {b = c;; ", "{} = a; ",    "(a) = b; ",  "<61> = a; ",
          "a = <f>; ",     "a = <0 f>; ",   "a = <0g>; ",    "a = <0f; ",   "a = (1); } "})
        rows.refusedEntry(bad);
}

void addDocuments(Rows &rows)
{
    const QByteArray good = profileWith("x");
    rows.readProfile("comments", "/* { */ // (\n" + profileWith("/**/ x // ;\n", "/* a; **/ ", " // }"), "x");
    rows.readProfile("white space around", " \r\n\t" + good + "\n\n", "x");
    rows.readProfile("no braces around", good.mid(1, good.size() - 2), "x");
    rows.refusedProfile("no brace at the end", good.left(good.size() - 1));
    rows.refusedProfile("no brace in front", good.mid(1));
    rows.refusedProfile("text behind it", profileWith("x", {}, " y"));
    rows.refusedProfile("two of them", good + good);
    rows.refusedProfile("an unterminated comment in it", profileWith("x", "/* "));
    rows.refusedProfile("a NUL in it", profileWith(QByteArray("\"a\0b\"", 5)));
    rows.refusedProfile("an array of it", '(' + good + ')');
    rows.refusedProfile("a text", "\"" + good + '"');
    rows.refusedProfile("nested 1,000 deep",
                        profileWith("x", "a = " + QByteArray(1000, '(') + QByteArray(1000, ')') + "; "));
}

} // namespace

QList<PropertyListCase> PropertyListCases::oldStyle()
{
    Rows rows;
    addTexts(rows);
    addContainers(rows);
    addDocuments(rows);
    return rows.all();
}
