// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

/// Binary property lists ("bplist00"): a table of objects that refer to each other by number, behind them
/// the table of their offsets, and a trailer of 32 bytes. The format is described in the comments of
/// Apple's published CFBinaryPList.c.
namespace BinaryPropertyList {

bool isBinary(const QByteArray &bytes);

/// Walks all that the top object leads to. One line, when a reference leads outside or in a circle, an object
/// has an unknown type or reaches beyond its table, or the whole, written out, breaks PropertyListInput's
/// limits. Empty when all is well.
QString problemOf(const QByteArray &bytes);

} // namespace BinaryPropertyList
