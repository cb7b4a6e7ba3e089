// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

/// XML property lists as strictly as the Mac's commands take them; libplist passes over much that is damaged.
namespace XmlList {

/// The same list in UTF-8, in the simplest form of each element: integers in decimal, no references but
/// three, no comments, CDATA or document type. Throws FlatPkg::Error for what is no sound list, for a
/// document type that declares anything and for more than `mostLevels` elements inside each other. Time is
/// linear.
QByteArray simplified(const QByteArray &xml, int mostLevels);

} // namespace XmlList
