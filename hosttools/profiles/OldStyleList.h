// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

/// Property lists in the oldest form, { key = value; }, which libplist does not know.
namespace OldStyleList {

/// Whether bytes that are no binary list look like one of these instead of XML.
bool isOne(const QByteArray &bytes);

/// The same list in XML. Throws FlatPkg::Error for what is no sound list and for more than `mostLevels`
/// values inside each other. Time is linear.
QByteArray asXml(const QByteArray &bytes, int mostLevels);

} // namespace OldStyleList
