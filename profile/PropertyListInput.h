// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/XmlStream.h"
#include "core/Result.h"
#include "profile/PropertyListSink.h"

#include <QByteArray>
#include <QString>

/// Property lists of any format and origin. They are read here, because Foundation's parsers recurse without
/// a limit, follow references in a circle, differ in what they refuse, and some of them take what they do not
/// understand for nothing at all. Linear in time; any thread.
namespace PropertyListInput {

constexpr qint64 maximumBytes = XmlStream::maximumBytes;
constexpr int maximumDepth = XmlStream::maximumDepth;
/// Each attribute of a settings tree takes a key and a string.
constexpr int maximumNodes = 2 * XmlStream::maximumNodes;

enum class Format { Xml, Binary, OldStyle };

/// What the bytes begin as. White space and a byte order mark may stand in front of text.
Format formatOf(const QByteArray &bytes);

/// Hands the list to the sink. A problem when it breaks the limits or is no sound list; what the sink has got
/// is to be forgotten then.
Result<> read(const QByteArray &bytes, PropertyList::Sink &sink);

} // namespace PropertyListInput
