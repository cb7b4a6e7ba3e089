// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

#include <QString>

struct Product;

/// Where an expanded package keeps its install scripts, with a slash at the end: "Scripts/" in the given
/// folder where that exists, otherwise in the product's component package below it.
QString scriptsFolder(const QString &folder, const Product &product);

/// The scripts of a package come from outside. Before one is edited or gets a new neighbour, these tell
/// whether it is what it should be, and not a link that leads out of the package.

/// That the path, with or without a slash at the end, is a real folder.
Result<> isRealFolder(const QString &path);

/// That the script in a real scripts folder is a regular file.
Result<> isRealScript(const QString &scripts, const QString &name);
