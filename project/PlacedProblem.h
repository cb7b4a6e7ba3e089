// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/JsonReader.h"
#include "core/Result.h"

/// A problem about a place in a file that only the caller knows; see placedIn().
inline Problem problemAt(const Json::Place &place, const QString &text)
{
    return {place.line > 0 ? QStringLiteral("%1:%2").arg(place.line).arg(place.column) : QString(), text};
}

/// The same problem about the place in this file: "FILE:LINE:COLUMN".
inline Problem placedIn(const QString &file, const Problem &problem)
{
    return {problem.file.isEmpty() ? file : file + QLatin1Char(':') + problem.file, problem.text};
}
