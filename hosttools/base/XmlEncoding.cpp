// SPDX-License-Identifier: Apache-2.0
#include "hosttools/base/XmlEncoding.h"

#include <QList>
#include <QString>

#include <numeric>

namespace FlatPkg {

namespace {

/// The name behind `encoding=` in the declaration, in lower case.
QByteArray declaredName(const QByteArray &document)
{
    if (!document.startsWith("<?xml"))
        return {};
    const QByteArray declaration = document.left(document.left(256).indexOf("?>"));
    const auto key = declaration.indexOf("encoding");
    const QByteArray value = key < 0 ? QByteArray() : declaration.mid(key + 8).simplified().replace(" ", "");
    const char quote = value.size() > 1 ? value.at(1) : '\0';
    return value.mid(2, value.indexOf(quote, 2) - 2).toLower();
}

bool isLatin(const QByteArray &name)
{
    static const QList<QByteArray> names{"latin1",     "latin-1", "l1",    "iso8859-1",  "iso_8859-1",
                                         "iso-ir-100", "ibm819",  "cp819", "csisolatin1"};
    return names.contains(name);
}

/// Every byte is the character of the same number, but for Windows the ones that are control characters.
int describe(void * /*data*/, const char *name, XML_Encoding *encoding)
{
    const QByteArray wanted = QByteArray(name).toLower();
    const bool isWindows = wanted == "windows-1252" || wanted == "cp1252";
    if (!isWindows && !isLatin(wanted))
        return XML_STATUS_ERROR;
    std::iota(encoding->map, encoding->map + 256, 0);
    const QString characters = QStringLiteral("€.‚ƒ„…†‡ˆ‰Š‹Œ.Ž..‘’“”•–—˜™š›œ.žŸ");
    for (int i = 0; isWindows && i < 32; ++i)
        encoding->map[0x80 + i] = characters.at(i) == QLatin1Char('.') ? -1 : characters.at(i).unicode();
    return XML_STATUS_OK;
}

} // namespace

XML_Parser newXmlParser(const QByteArray &document)
{
    const QByteArray name = declaredName(document);
    const XML_Parser parser = XML_ParserCreate(name == "utf8" || name == "utf_8" ? "UTF-8" : nullptr);
    if (parser)
        XML_SetUnknownEncodingHandler(parser, describe, nullptr);
    return parser;
}

} // namespace FlatPkg
