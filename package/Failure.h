// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// Puts a cause into an optional output and returns false, so that a function can end with it.
inline bool fail(QString *error, const QString &cause)
{
    if (error)
        *error = cause;
    return false;
}
