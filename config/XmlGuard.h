// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

/// Looks at XML before a document tree is built from it, because Qt's tree exhausts the stack on deep
/// nesting and the memory on large or entity-laden input. One streaming pass; any thread.
namespace XmlGuard {

constexpr qint64 maximumBytes = 32 * 1024 * 1024;
constexpr int maximumDepth = 256;
/// Elements and attributes together; each costs the tree up to 1.5 kB.
constexpr int maximumNodes = 200 * 1000;

/// True when the bytes are well-formed XML within the limits, with no document type declaration and no
/// control characters. Otherwise `error` (optional) says what is wrong, with line and column.
bool accepts(const QByteArray &xml, QString *error = nullptr);

} // namespace XmlGuard
