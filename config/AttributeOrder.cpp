// SPDX-License-Identifier: Apache-2.0
#include "config/AttributeOrder.h"

#include <QRegularExpression>
#include <QStringList>

namespace {

QString sorted(const QString &attributes)
{
    static const QRegularExpression attribute(QStringLiteral(R"( [^\s=]+="[^"]*")"));
    QStringList list;
    for (auto match = attribute.globalMatch(attributes); match.hasNext();)
        list += match.next().captured();
    list.sort();
    return list.join(QString());
}

} // namespace

QString withSortedAttributes(const QString &markup)
{
    // What may hold a "<" that begins no tag comes first, so that it is passed over.
    static const QRegularExpression tag(
        QStringLiteral(R"(<!--.*?-->|<!\[CDATA\[.*?\]\]>|<\?.*?\?>|<[^\s<>/!?]+((?: [^\s=<>]+="[^"]*")+))"),
        QRegularExpression::DotMatchesEverythingOption);
    QString result;
    int copied = 0;
    for (auto match = tag.globalMatch(markup); match.hasNext();) {
        const QRegularExpressionMatch found = match.next();
        if (found.capturedLength(1) <= 0)
            continue;
        const auto start = found.capturedStart(1);
        result += markup.mid(copied, start - copied) + sorted(found.captured(1));
        copied = static_cast<int>(found.capturedEnd(1));
    }
    return result + markup.mid(copied);
}
