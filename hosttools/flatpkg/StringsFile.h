// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <optional>

namespace FlatPkg {

/// What the text form of a localization table gives for a key. Such a table has `"KEY" = "value";` pairs,
/// with comments and escapes, keys also without quotes; the last pair with the key counts. What is malformed
/// ends the table; it is not an error.
std::optional<QString> textIn(const QString &table, const QString &key);

/// The text of such a file: UTF-16 with or without a byte order mark, or UTF-8.
QString decodeStrings(const QByteArray &bytes);

} // namespace FlatPkg
