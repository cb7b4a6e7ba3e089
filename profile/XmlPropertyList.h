// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

/// Property lists in XML, as https://www.apple.com/DTDs/PropertyList-1.0.dtd describes them.
namespace XmlPropertyList {

/// The elements and texts of the XML alone, in UTF-8. Null, with `problem` set to one line with line and
/// column, when the XML is not well-formed, breaks PropertyListInput's limits, declares anything of its own
/// in its document type, or is not UTF-8.
QByteArray rewritten(const QByteArray &xml, QString &problem);

} // namespace XmlPropertyList
