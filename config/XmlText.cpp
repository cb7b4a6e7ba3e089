// SPDX-License-Identifier: Apache-2.0
#include "config/XmlText.h"

#include <algorithm>

namespace {

/// Whether half a surrogate pair stands there without the other.
bool isHalf(const QString &text, int place)
{
    const QChar c = text.at(place);
    if (c.isHighSurrogate())
        return place + 1 == text.size() || !text.at(place + 1).isLowSurrogate();
    return c.isLowSurrogate() && (place == 0 || !text.at(place - 1).isHighSurrogate());
}

} // namespace

bool isXmlUnit(const QString &text, int place)
{
    return isXmlCharacter(text.at(place)) && !isHalf(text, place);
}

bool isXmlText(const QString &text)
{
    for (int place = 0; place < text.size(); ++place) {
        if (!isXmlUnit(text, place))
            return false;
    }
    return true;
}

QString xmlText(const QString &text)
{
    if (isXmlText(text))
        return text;
    QString kept;
    kept.reserve(text.size());
    for (int place = 0; place < text.size(); ++place) {
        if (isXmlUnit(text, place))
            kept += text.at(place);
    }
    return kept;
}

QString withWholePairs(const QString &text)
{
    QString whole = text;
    for (int place = 0; place < text.size(); ++place) {
        if (isHalf(text, place))
            whole[place] = QChar::ReplacementCharacter;
    }
    return whole;
}

bool isXmlName(const QString &name)
{
    const auto isStart = [](QChar c) {
        return c.isLetter() || c == QLatin1Char('_') || c == QLatin1Char(':');
    };
    const auto isPart = [isStart](QChar c) {
        return isStart(c) || c.isNumber() || c == QLatin1Char('-') || c == QLatin1Char('.');
    };
    return !name.isEmpty() && isStart(name.at(0)) && std::all_of(name.begin(), name.end(), isPart);
}
