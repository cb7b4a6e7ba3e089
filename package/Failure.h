// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

#include <QString>

/// Puts a cause into an optional output and returns false, so that a function can end with it.
inline bool fail(QString *error, const QString &cause)
{
    if (error)
        *error = cause;
    return false;
}

/// Ends in the same way a function whose last step gives a result.
inline bool ended(const Result<> &result, QString *error)
{
    return result || fail(error, result.problem().line());
}
