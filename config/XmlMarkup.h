// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

class QDomNode;

/// Trees as text that every version of Qt, and every run, writes the same.
namespace XmlMarkup {

constexpr int onOneLine = -1;

/// The node with everything in it, in UTF-8, without a declaration of its own. Each child gets a line and
/// `indent` blanks for each level, except beside text; or all is on one line. The attributes of an element
/// stand in the order of their names. A node that is no document is itself on the first level, as when Qt
/// writes it. Empty for a null node. The time grows with the length of the result only. Any thread.
QByteArray of(const QDomNode &node, int indent);

} // namespace XmlMarkup
