// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

struct Product;

// Why a file is of no use, or will not be: where the window itself says nothing, or says it only after the
// work is done, the log has the reason. Both run commands and block until they end.

/// A package that was opened: what keeps a build from working on it, and what such a build would warn of.
void logWhatABuildWouldSay(const QString &package, const Product &product);

/// A profile that was refused.
void logWhyProfileIsRefused(const QString &path, const Product &product);
