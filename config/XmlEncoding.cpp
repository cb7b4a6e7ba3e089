// SPDX-License-Identifier: Apache-2.0
#include "config/XmlEncoding.h"

#include <QHash>
#include <QRegularExpression>
#include <QString>

#include <array>

namespace {

constexpr const char *windows1252 = "windows-1252";

/// The characters from 0x80 to 0x9f; elsewhere it is ISO 8859-1.
constexpr std::array<int, 32> windowsCharacters = {
    0x20ac, -1,     0x201a, 0x0192, 0x201e, 0x2026, 0x2020, 0x2021, 0x02c6, 0x2030, 0x0160,
    0x2039, 0x0152, -1,     0x017d, -1,     -1,     0x2018, 0x2019, 0x201c, 0x201d, 0x2022,
    0x2013, 0x2014, 0x02dc, 0x2122, 0x0161, 0x203a, 0x0153, -1,     0x017e, 0x0178};

bool startsWithUtf16Mark(const QByteArray &xml)
{
    return xml.startsWith("\xfe\xff") || xml.startsWith("\xff\xfe");
}

bool isUtf16(const QByteArray &xml)
{
    return xml.size() > 1 && (startsWithUtf16Mark(xml) || xml.at(0) == 0 || xml.at(1) == 0);
}

/// In lower case; empty when the document declares none.
QString declaredEncoding(const QByteArray &xml)
{
    static const QRegularExpression declaration(
        QStringLiteral("^<\\?xml\\s[^>]*?\\bencoding\\s*=\\s*[\"']([A-Za-z0-9._-]+)[\"']"));
    return declaration.match(QString::fromLatin1(xml.left(256))).captured(1).toLower();
}

/// The name that Expat or we know for one that it does not; null for all others.
const char *knownName(const QString &declared)
{
    static const QHash<QString, const char *> names{{QStringLiteral("utf8"), "UTF-8"},
                                                    {QStringLiteral("utf_8"), "UTF-8"},
                                                    {QStringLiteral("latin1"), "ISO-8859-1"},
                                                    {QStringLiteral("latin-1"), "ISO-8859-1"},
                                                    {QStringLiteral("l1"), "ISO-8859-1"},
                                                    {QStringLiteral("iso8859-1"), "ISO-8859-1"},
                                                    {QStringLiteral("iso_8859-1"), "ISO-8859-1"},
                                                    {QStringLiteral("iso-ir-100"), "ISO-8859-1"},
                                                    {QStringLiteral("ibm819"), "ISO-8859-1"},
                                                    {QStringLiteral("cp819"), "ISO-8859-1"},
                                                    {QStringLiteral("csisolatin1"), "ISO-8859-1"},
                                                    {QStringLiteral("windows-1252"), windows1252},
                                                    {QStringLiteral("cp1252"), windows1252}};
    return names.value(declared, nullptr);
}

/// A byte order mark is right where the declaration says something else.
const char *encodingOf(const QByteArray &xml)
{
    if (xml.startsWith("\xef\xbb\xbf"))
        return "UTF-8";
    return startsWithUtf16Mark(xml) ? "UTF-16" : knownName(declaredEncoding(xml));
}

int describeWindows1252(void * /*data*/, const char *name, XML_Encoding *encoding)
{
    if (qstrcmp(name, windows1252) != 0)
        return XML_STATUS_ERROR;
    for (int code = 0; code < 256; ++code)
        encoding->map[code] = code;
    std::copy(windowsCharacters.begin(), windowsCharacters.end(), encoding->map + 0x80);
    return XML_STATUS_OK;
}

} // namespace

/// Expat takes the unit behind the first half of a pair for the second half, whatever it is.
bool XmlEncoding::hasHalfAPair(const QByteArray &xml)
{
    if (!isUtf16(xml))
        return false;
    const bool bigEndian = xml.startsWith('\xfe') || xml.at(0) == 0;
    bool expectsLow = false;
    for (int i = bigEndian ? 0 : 1; i < xml.size(); i += 2) {
        const int kind = static_cast<uchar>(xml.at(i)) & 0xfc;
        if ((kind == 0xdc) != expectsLow)
            return true;
        expectsLow = kind == 0xd8;
    }
    return expectsLow;
}

XML_Parser XmlEncoding::newParser(const QByteArray &xml)
{
    const XML_Parser parser = XML_ParserCreate(encodingOf(xml));
    XML_SetUnknownEncodingHandler(parser, describeWindows1252, nullptr);
    return parser;
}
