// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"
#include "profile/PropertyListSink.h"

/// Binary property lists ("bplist0" and any character): a table of objects that refer to each other by
/// number, behind them the table of their offsets, and a trailer of 32 bytes. The format is described in the
/// comments of Apple's published CFBinaryPList.c. Any thread.
namespace BinaryPropertyList {

bool isBinary(const QByteArray &bytes);

/// Hands the top object and all that it leads to to the sink. A problem when a
/// reference leads outside or in a circle, an object has an unknown type or reaches beyond its table, a key
/// is no text, an integer needs more than 64 bits, or the whole, written out, breaks PropertyListInput's
/// limits.
Result<> read(const QByteArray &bytes, PropertyList::Sink &sink);

} // namespace BinaryPropertyList
