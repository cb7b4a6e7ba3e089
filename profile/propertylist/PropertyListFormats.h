// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "profile/propertylist/PropertyListInput.h"

// One reader for each format, for PropertyListInput only, which knows the format by its first bytes.

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

/// Property lists in XML, as https://www.apple.com/DTDs/PropertyList-1.0.dtd describes them and Foundation
/// reads them: a key may stand for a text, and the outermost `<plist>` may be missing. Any thread.
namespace XmlPropertyList {

/// Hands the list to the sink. A problem, with line and column, when the XML is
/// not well-formed, breaks PropertyListInput's limits, declares anything of its own in its document type, or
/// is no property list.
Result<> read(const QByteArray &xml, PropertyList::Sink &sink);

} // namespace XmlPropertyList

/// Property lists in the oldest form, { key = value; }, in the dialect that Foundation reads: C's comments,
/// texts in either kind of quotation marks or, when they are plain, in none, data as hexadecimal digits, and
/// a key alone for an entry whose value is that key. The outermost braces may be missing. Any thread.
namespace OldStylePropertyList {

/// Hands the list to the sink. A problem that names the line when it breaks PropertyListInput's limits or is
/// no property list.
Result<> read(const QByteArray &utf8, PropertyList::Sink &sink);

} // namespace OldStylePropertyList
