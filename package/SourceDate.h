// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

#include <QString>

#include <optional>

/// What SOURCE_DATE_EPOCH asks for: the newest time that a package may name for a file, so that the same
/// input and settings make the same bytes whenever they are built.
namespace SourceDate {

/// Seconds since 1970; nothing when the variable is not set. Anything in it but a whole number of seconds up
/// to now is a problem.
Result<std::optional<qint64>> read();

/// Gives everything below the folder that is newer than that moment this moment. Links are not followed.
Result<> limitTimesBelow(const QString &folder, qint64 newest);

} // namespace SourceDate
