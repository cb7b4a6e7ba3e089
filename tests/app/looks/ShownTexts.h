// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QRect>
#include <QString>

class QWidget;

/// A text that a widget shows and where, in the widget's coordinates.
struct ShownText
{
    QWidget *widget = nullptr;
    QString text;
    QRect rect;
};

/// Every text that is visible in a window, that of list rows and table cells included.
QList<ShownText> shownTextsIn(QWidget &window);

/// The part of the window where the text is seen; empty when it is scrolled out of sight.
QRect seenPartOf(const ShownText &text, const QWidget &window);
