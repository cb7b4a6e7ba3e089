// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/XmlStream.h"

#include <QByteArray>
#include <QString>

/// Looks at property-list data before Foundation sees it, because its parsers recurse without a limit,
/// follow references in a circle and expand entities. One pass over the data; any thread.
namespace PropertyListInput {

constexpr qint64 maximumBytes = XmlStream::maximumBytes;
constexpr int maximumDepth = XmlStream::maximumDepth;
/// Each attribute of a settings tree takes a key and a string.
constexpr int maximumNodes = 2 * XmlStream::maximumNodes;

/// The same property list in a form that Foundation can be given: XML without a document type, comments,
/// CDATA and foreign encodings; binary and old-style data as they are. White space and a byte order mark in
/// front are dropped. Null when it breaks the limits or is not well-formed; `error` (optional) then
/// says why in one line.
QByteArray vetted(const QByteArray &bytes, QString *error = nullptr);

} // namespace PropertyListInput
