// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosttools/flatpkg/XarReader.h"

namespace FlatPkg {

/// What a package says about itself.
struct ProductInfo
{
    QByteArray title;               ///< of a product archive, in English where it has several languages
    QVector<QByteArray> components; ///< names of the component packages, in the archive's order
};

/// Reads Distribution, its localized strings and PackageInfo, never a payload. A plain component package
/// has no title, and its identifier stands for its only component. Throws Error when the archive is
/// neither.
ProductInfo readProductInfo(const XarReader &package);

} // namespace FlatPkg
