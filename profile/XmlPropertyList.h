// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"
#include "profile/PropertyListSink.h"

/// Property lists in XML, as https://www.apple.com/DTDs/PropertyList-1.0.dtd describes them and Foundation
/// reads them: a key may stand for a text, and the outermost <plist> may be missing. Any thread.
namespace XmlPropertyList {

/// Hands the list to the sink. A problem, with line and column, when the XML is
/// not well-formed, breaks PropertyListInput's limits, declares anything of its own in its document type, or
/// is no property list.
Result<> read(const QByteArray &xml, PropertyList::Sink &sink);

} // namespace XmlPropertyList
