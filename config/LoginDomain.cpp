// SPDX-License-Identifier: Apache-2.0
#include "config/LoginDomain.h"

#include <QRegularExpression>

namespace {

/// The "@" and the 255 characters after it. Counted in UTF-16: what has more units than characters has
/// characters that no domain name has.
constexpr int maxLength = 256;

} // namespace

bool isLoginDomain(const QString &text)
{
    // Refused by length before anything is matched, so that no input makes the matching long or deep.
    if (text.size() > maxLength)
        return false;
    // \A and \z because $ would also match before a line break at the end.
    static const QRegularExpression expression(
        QStringLiteral("\\A@(?:[A-Za-z0-9](?:[A-Za-z0-9-]{0,61}[A-Za-z0-9])?\\.)+[A-Za-z]{2,}\\z"));
    return expression.match(text).hasMatch();
}

QStringList loginDomainsOf(const QString &list)
{
    return list.split(QLatin1Char(';'), Qt::SkipEmptyParts);
}
