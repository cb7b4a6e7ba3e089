// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

#include <optional>

namespace FlatPkg {

/// Stores a small value with an open file or folder. A file system that keeps no such attributes, or no
/// more of them, is no error: the value is a help, and callers do without where it is missing.
void setExtendedAttribute(int fd, const QByteArray &name, const QByteArray &value);

/// The stored value, if there is one.
std::optional<QByteArray> extendedAttribute(int fd, const QByteArray &name);

} // namespace FlatPkg
