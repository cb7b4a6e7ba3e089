// SPDX-License-Identifier: Apache-2.0
#include "tests/app/looks/Contrast.h"

#include <QHash>

#include <algorithm>
#include <cmath>

namespace {

double linear(int channel)
{
    const double value = channel / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double luminanceOf(QRgb color)
{
    return 0.2126 * linear(qRed(color)) + 0.7152 * linear(qGreen(color)) + 0.0722 * linear(qBlue(color));
}

/// The colour that most pixels of a row have, and the greatest contrast with it.
InkedLine rowOf(const QImage &picture, const QRect &part, int y)
{
    QHash<QRgb, int> counts;
    for (int x = part.left(); x <= part.right(); ++x)
        ++counts[picture.pixel(x, y)];
    InkedLine row = {y, 1, 0, 1};
    int most = 0;
    for (auto count = counts.cbegin(); count != counts.cend(); ++count) {
        if (count.value() > most) {
            most = count.value();
            row.background = count.key();
        }
    }
    for (auto count = counts.cbegin(); count != counts.cend(); ++count)
        row.contrast = std::max(row.contrast, contrastOf(row.background, count.key()));
    return row;
}

bool isInked(const InkedLine &row)
{
    return row.contrast > 1;
}

} // namespace

double contrastOf(QRgb first, QRgb second)
{
    if (first == second)
        return 1;
    const auto [dark, light] = std::minmax({luminanceOf(first), luminanceOf(second)});
    return (light + 0.05) / (dark + 0.05);
}

QList<InkedLine> inkedLinesIn(const QImage &picture, const QRect &part)
{
    const QRect area = part & picture.rect();
    QList<InkedLine> lines;
    bool within = false;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        const InkedLine row = rowOf(picture, area, y);
        const bool goesOn = within && isInked(row) && row.background == lines.last().background;
        if (goesOn) {
            ++lines.last().height;
            lines.last().contrast = std::max(lines.last().contrast, row.contrast);
        } else if (isInked(row)) {
            lines += row;
        }
        within = isInked(row);
    }
    return lines;
}
