// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

#include <expat.h>

namespace FlatPkg {

/// A parser for the document in the encoding that it declares, also where it declares Windows-1252, or UTF-8
/// or ISO 8859-1 by one of their other names. Null without memory; XML_ParserFree() takes it.
XML_Parser newXmlParser(const QByteArray &document);

} // namespace FlatPkg
