// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <optional>

/// What SOURCE_DATE_EPOCH asks for: the newest time that a package may name for a file, so that the same
/// input and settings make the same bytes whenever they are built.
namespace SourceDate {

/// Seconds since 1970; nothing when the variable is not set. False, with the reason, when it holds anything
/// but a whole number of seconds up to now.
bool read(std::optional<qint64> *seconds, QString *problem);

/// Gives everything below the folder that is newer than that moment this moment. Links are not followed.
bool limitTimesBelow(const QString &folder, qint64 newest, QString *problem);

} // namespace SourceDate
