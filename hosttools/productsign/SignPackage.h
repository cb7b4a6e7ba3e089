// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

class PackageSignature;

/// Makes the output a copy of a flat package with this signature and no other, nor a stapled ticket. It
/// appears, or replaces a file, when it is complete. The members are moved by whole pages and not read: their
/// checksums are those of the package. Throws FlatPkg::Error.
void signPackage(const QByteArray &input, const QByteArray &output, const PackageSignature &signature);
