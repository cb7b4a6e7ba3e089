// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"
#include "package/PackageInspection.h"

#include <QString>

#include <optional>

struct Product;

/// What is known of an installer package before a build.
struct InstallerCheck
{
    Result<> verdict;                            ///< whether a build would work
    std::optional<PackageInspection> inspection; ///< there even for some packages that are refused
};

/// Looks at a file that is to be the installer of the product, for a build that makes the product the default
/// viewer or not. `emptyFolder` belongs to the caller. Its time does not depend on the package's size.
InstallerCheck checkInstaller(const QString &package, const Product &product, const QString &emptyFolder,
                              bool makesDefaultViewer);

/// That the package's install scripts could not be read, with advice that fits the cause.
Problem unreadableScripts(const QString &package, const QString &cause);

/// The product whose installer the file is; never null.
Result<const Product *> productOfInstaller(const QString &package);
