// SPDX-License-Identifier: Apache-2.0
#include "package/ProductVersion.h"

#include "package/Logging.h"

#include <optional>

namespace {

/// The rest of the line behind the key, without quotes.
std::optional<QString> valueOf(const QString &key, const QString &text)
{
    const int position = text.indexOf(key);
    if (position <= 0)
        return {};
    const int start = position + key.size();
    const int end = text.indexOf(QLatin1Char('\n'), position);
    return text.mid(start, end < 0 ? -1 : end - start).remove(QLatin1Char('"'));
}

/// Twice as many characters as stand before the first point: that is major and minor version for
/// "13.0.1", and all of "2024.1.0".
QString shortened(const QString &version)
{
    const int point = version.indexOf(QLatin1Char('.'));
    return point > 0 ? version.left(2 * point) : version;
}

QString logged(const QString &version)
{
    qCDebug(logPackage).noquote() << QStringLiteral("version: ") + version;
    return version;
}

} // namespace

QString productVersion(const QString &postinstall)
{
    QString version;
    if (const auto value = valueOf(QStringLiteral("bigversion="), postinstall))
        version = logged(*value);
    if (!version.isEmpty())
        return version;
    if (const auto value = valueOf(QStringLiteral("newVersion="), postinstall))
        version = logged(shortened(*value));
    return version;
}
