// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"
#include "profile/PropertyListSink.h"

/// Property lists in the oldest form, { key = value; }, in the dialect that Foundation reads: C's comments,
/// texts in either kind of quotation marks or, when they are plain, in none, data as hexadecimal digits, and
/// a key alone for an entry whose value is that key. The outermost braces may be missing. Any thread.
namespace OldStylePropertyList {

/// Hands the list to the sink. A problem that names the line when it breaks PropertyListInput's limits or is
/// no property list.
Result<> read(const QByteArray &utf8, PropertyList::Sink &sink);

} // namespace OldStylePropertyList
