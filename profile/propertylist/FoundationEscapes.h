// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// Text as every Foundation carries it unharmed through an XML property list. One of them writes characters
/// beyond the first plane as their escapes, "\UD83D\UDE00", reads such escapes wherever somebody has typed
/// them, and drops carriage returns and a byte order mark in front. So these characters, the backslash and
/// the sign that marks an escape of ours become such escapes before Foundation sees the text, and themselves
/// again behind it. Any thread.
namespace FoundationEscapes {

/// At most twice as long as the text.
QString escaped(const QString &text);

/// The way back: unescaped(escaped(text)) is the text, for any text.
QString unescaped(const QString &text);

} // namespace FoundationEscapes
