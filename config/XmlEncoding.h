// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

#include <expat.h>

/// The encodings in which XML is taken: those that Expat knows, Windows-1252, and names that others use for
/// UTF-8 and ISO 8859-1. Any thread.
namespace XmlEncoding {

/// Whether UTF-16 holds half of a surrogate pair, which Expat does not see. False for all other XML.
bool hasHalfAPair(const QByteArray &xml);

/// A parser that knows in which encoding the document is. XML_ParserFree() takes it.
XML_Parser newParser(const QByteArray &xml);

} // namespace XmlEncoding
