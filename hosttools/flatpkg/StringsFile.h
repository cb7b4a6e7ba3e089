// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QString>

namespace FlatPkg {

using Strings = QHash<QString, QString>;

/// Reads the text form of a localization table: `"KEY" = "value";` pairs, with comments and escapes, keys
/// also without quotes. What is malformed ends the table; it is not an error.
Strings parseStrings(const QString &text);

/// The text of such a file: UTF-16 with or without a byte order mark, or UTF-8.
QString decodeStrings(const QByteArray &bytes);

} // namespace FlatPkg
