// SPDX-License-Identifier: Apache-2.0
#include "profile/PropertyListInput.h"

#include "profile/BinaryPropertyList.h"
#include "profile/XmlPropertyList.h"

#include <algorithm>

namespace {

/// The parser of old-style lists recurses on brackets; counting all of them cannot be fooled by quotes.
constexpr int maximumBrackets = 4096;

QByteArray withoutLead(const QByteArray &bytes)
{
    const QByteArray byteOrderMark("\xef\xbb\xbf");
    int start = bytes.startsWith(byteOrderMark) ? byteOrderMark.size() : 0;
    while (start < bytes.size() && QByteArray(" \t\r\n").contains(bytes.at(start)))
        ++start;
    return bytes.mid(start);
}

Problem tooLarge()
{
    return {{},
            QStringLiteral("it is larger than %1 MiB").arg(PropertyListInput::maximumBytes / (1024 * 1024))};
}

bool isUtf8(const QByteArray &bytes)
{
    return QString::fromUtf8(bytes).toUtf8() == bytes;
}

QString problemOfOldStyle(const QByteArray &bytes)
{
    if (bytes.isEmpty())
        return QStringLiteral("it is empty");
    if (bytes.contains('\0') || !isUtf8(bytes))
        return QStringLiteral("it is no text");
    const auto brackets =
        std::count_if(bytes.begin(), bytes.end(), [](char c) { return c == '(' || c == '{' || c == '<'; });
    if (brackets > maximumBrackets)
        return QStringLiteral("it has more than %1 brackets").arg(maximumBrackets);
    const auto separators =
        std::count_if(bytes.begin(), bytes.end(), [](char c) { return c == ',' || c == ';' || c == '='; });
    if (separators > PropertyListInput::maximumNodes)
        return QStringLiteral("it has more than %1 keys and values").arg(PropertyListInput::maximumNodes);
    return {};
}

bool isXml(const QByteArray &bytes)
{
    // In UTF-16, too, with its mark or without.
    return bytes.startsWith('<') || bytes.startsWith("\xff\xfe") || bytes.startsWith("\xfe\xff") ||
           bytes.startsWith(QByteArray("\0<", 2));
}

} // namespace

PropertyListInput::Format PropertyListInput::formatOf(const QByteArray &bytes)
{
    if (BinaryPropertyList::isBinary(bytes))
        return Format::Binary;
    return isXml(withoutLead(bytes)) ? Format::Xml : Format::OldStyle;
}

Result<> PropertyListInput::read(const QByteArray &bytes, PropertyList::Sink &sink)
{
    if (bytes.size() > maximumBytes)
        return tooLarge();
    return formatOf(bytes) == Format::Binary ? BinaryPropertyList::read(bytes, sink)
                                             : XmlPropertyList::read(withoutLead(bytes), sink);
}

Result<QByteArray> PropertyListInput::vettedOldStyle(const QByteArray &bytes)
{
    if (bytes.size() > maximumBytes)
        return tooLarge();
    const QByteArray list = withoutLead(bytes);
    const QString problem = problemOfOldStyle(list);
    if (!problem.isEmpty())
        return Problem{{}, problem};
    return list;
}
