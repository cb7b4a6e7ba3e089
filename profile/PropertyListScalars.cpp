// SPDX-License-Identifier: Apache-2.0
#include "profile/PropertyListScalars.h"

#include <QDateTime>
#include <QRegularExpression>

#include <limits>

using PropertyList::Scalar;

namespace {

std::optional<Scalar> negated(quint64 magnitude)
{
    const quint64 most = static_cast<quint64>(std::numeric_limits<qint64>::max()) + 1;
    if (magnitude > most)
        return std::nullopt;
    return magnitude == most ? std::numeric_limits<qint64>::min() : -static_cast<qint64>(magnitude);
}

Scalar counted(quint64 magnitude)
{
    if (magnitude > static_cast<quint64>(std::numeric_limits<qint64>::max()))
        return magnitude;
    return static_cast<qint64>(magnitude);
}

/// Nothing for text that is no such word.
std::optional<double> specialReal(const QString &text)
{
    static const QRegularExpression infinity(
        QRegularExpression::anchoredPattern(QStringLiteral("([-+]?)inf(inity)?")),
        QRegularExpression::CaseInsensitiveOption);
    if (text.compare(QLatin1String("nan"), Qt::CaseInsensitive) == 0)
        return std::numeric_limits<double>::quiet_NaN();
    const QRegularExpressionMatch match = infinity.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    const double endless = std::numeric_limits<double>::infinity();
    return match.captured(1) == QLatin1String("-") ? -endless : endless;
}

} // namespace

std::optional<Scalar> PropertyListScalars::integer(const QString &text)
{
    static const QRegularExpression form(QRegularExpression::anchoredPattern(
        QStringLiteral("\\s*([-+]?)\\s*(?:0[xX]([0-9a-fA-F]+)|([0-9]+))")));
    const QRegularExpressionMatch match = form.match(text);
    const bool isHexadecimal = !match.captured(2).isEmpty();
    bool fits = false;
    const quint64 magnitude =
        isHexadecimal ? match.captured(2).toULongLong(&fits, 16) : match.captured(3).toULongLong(&fits, 10);
    if (!fits)
        return std::nullopt;
    return match.captured(1) == QLatin1String("-") ? negated(magnitude) : counted(magnitude);
}

std::optional<Scalar> PropertyListScalars::real(const QString &text)
{
    static const QRegularExpression form(QRegularExpression::anchoredPattern(
        QStringLiteral("\\s*[-+]?([0-9]+\\.?[0-9]*|\\.[0-9]+)([eE][-+]?[0-9]+)?")));
    if (const std::optional<double> special = specialReal(text))
        return *special;
    // What is too large becomes infinite.
    return form.match(text).hasMatch() ? std::optional<Scalar>(text.trimmed().toDouble()) : std::nullopt;
}

std::optional<Scalar> PropertyListScalars::date(const QString &text)
{
    static const QRegularExpression form(QRegularExpression::anchoredPattern(
        QStringLiteral("-?[0-9]+-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}Z")));
    if (!form.match(text).hasMatch())
        return std::nullopt;
    // Of what is no day it gives 0.
    const QDateTime date = QDateTime::fromString(text, Qt::ISODate);
    return PropertyList::Date{static_cast<double>(date.toSecsSinceEpoch())};
}

Scalar PropertyListScalars::data(const QString &text)
{
    return QByteArray::fromBase64(text.toLatin1());
}
