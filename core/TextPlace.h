// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// Where something stands in a text. Counted from 1 and in characters; 0 for no place.
struct TextPlace
{
    int line = 0;
    int column = 0;

    bool isKnown() const { return line > 0; }

    /// "line 3, column 5".
    QString text() const { return QStringLiteral("line %1, column %2").arg(line).arg(column); }
};
