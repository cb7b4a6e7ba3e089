// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

/// Binary property lists ("bplist0" and any character).
namespace BinaryList {

bool isOne(const QByteArray &bytes);

/// The same list under the header that libplist knows, its tables looked at as the Mac's commands do: their
/// sizes have to be those of the file, and each wide enough for what it counts. Throws FlatPkg::Error when
/// they are not, and for an integer of more than 64 bits. What the objects hold is not looked at.
QByteArray withSoundTables(const QByteArray &bytes);

} // namespace BinaryList
