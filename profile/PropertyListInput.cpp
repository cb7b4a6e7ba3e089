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

QByteArray vettedByFormat(const QByteArray &bytes, QString &problem)
{
    if (bytes.startsWith('<'))
        return XmlPropertyList::rewritten(bytes, problem);
    problem =
        BinaryPropertyList::isBinary(bytes) ? BinaryPropertyList::problemOf(bytes) : problemOfOldStyle(bytes);
    return bytes;
}

} // namespace

QByteArray PropertyListInput::vetted(const QByteArray &bytes, QString *error)
{
    QString problem;
    QByteArray result;
    if (bytes.size() > maximumBytes)
        problem = QStringLiteral("it is larger than %1 MiB").arg(maximumBytes / (1024 * 1024));
    else
        result = vettedByFormat(withoutLead(bytes), problem);
    if (error)
        *error = problem;
    return problem.isEmpty() ? result : QByteArray();
}
