// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QImage>
#include <QList>
#include <QRect>

/// The contrast ratio of two colours as the web's accessibility guidelines define it, from 1 to 21.
double contrastOf(QRgb first, QRgb second);

/// A line of text, or of anything else, in a picture.
struct InkedLine
{
    int top = 0;
    int height = 0;
    QRgb background = 0;
    double contrast = 1; ///< of the background and what stands out of it most
};

/// The lines in a part of a picture, from top to bottom. A line ends where a row of pixels shows nothing but
/// a background.
QList<InkedLine> inkedLinesIn(const QImage &picture, const QRect &part);
