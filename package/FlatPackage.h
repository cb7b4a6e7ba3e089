// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

#include <QString>

struct Product;

/// The vendor's package as the one file that it comes in. All block on external commands; any thread.
namespace FlatPackage {

/// Whether the file is the installer of the product; what is no file is none. A problem when that cannot be
/// told.
Result<bool> isInstallerOf(const QString &package, const Product &product);

/// Expands a package into a folder that must not exist yet.
Result<> expand(const QString &package, const QString &folder);

/// Makes a package of a folder.
Result<> flatten(const QString &folder, const QString &package);

} // namespace FlatPackage
