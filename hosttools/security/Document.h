// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

/// Whole files of bounded size. Paths are raw bytes; everything throws FlatPkg::Error without the path.
namespace Document {

/// Profiles have a few hundred kilobytes; what is larger than this is none.
constexpr qint64 largestSize = 32LL * 1024 * 1024;

/// Room for the signature and the certificates around a document.
constexpr qint64 largestSignedSize = largestSize + 1024LL * 1024;

/// The bytes of a regular file; refuses a file that is larger, in bytes, than `largest`.
QByteArray read(const QByteArray &path, qint64 largest);

/// Makes a file or replaces it in one step, mode and (for root) owner kept. A link or anything else but a
/// file is refused; after any failure what was there is there still.
void replace(const QByteArray &path, const QByteArray &bytes);

/// Writes bytes to standard output as they are.
void print(const QByteArray &bytes);

} // namespace Document
