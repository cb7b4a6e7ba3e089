// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

#include <QByteArray>

/// The SHA-256 of a whole file in hexadecimal. By OpenSSL, which is several times as fast as Qt where
/// packages are large. Any thread; blocks.
Result<QByteArray> sha256OfFile(const QString &path);
