// SPDX-License-Identifier: Apache-2.0
#include "package/ProductVersion.h"

#include "config/XmlText.h"
#include "core/Logging.h"

#include <optional>

namespace {

/// The rest of the line behind the key, without quotes.
std::optional<QString> valueOf(const QString &key, const QString &text)
{
    const auto position = text.indexOf(key);
    if (position <= 0)
        return {};
    const auto start = position + key.size();
    const auto end = text.indexOf(QLatin1Char('\n'), position);
    return text.mid(start, end < 0 ? -1 : end - start).remove(QLatin1Char('"'));
}

/// Twice as many characters as stand before the first point: that is major and minor version for
/// "13.0.1", and all of "2024.1.0".
QString shortened(const QString &version)
{
    const auto point = version.indexOf(QLatin1Char('.'));
    return point > 0 ? version.left(2 * point) : version;
}

/// A document with other characters could not be read again.
std::optional<QString> usable(const std::optional<QString> &version, bool *unusable)
{
    if (!version || isXmlText(*version))
        return version;
    *unusable = true;
    return {};
}

QString logged(const QString &version)
{
    qCDebug(logPackage).noquote() << QStringLiteral("version: ") + version;
    return version;
}

QString firstVersion(const QString &postinstall, bool *unusable)
{
    QString version;
    if (const auto value = usable(valueOf(QStringLiteral("bigversion="), postinstall), unusable))
        version = logged(*value);
    if (!version.isEmpty())
        return version;
    if (const auto value = usable(valueOf(QStringLiteral("newVersion="), postinstall), unusable))
        version = logged(shortened(*value));
    return version;
}

} // namespace

QString productVersion(const QString &postinstall, bool *unusable)
{
    bool found = false;
    const QString version = firstVersion(postinstall, &found);
    if (unusable)
        *unusable = found;
    return version;
}
