// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

#include <QString>

class OutputFile;
struct Product;

/// Flattens a folder into the hidden folder of an output and reads the result back: it must be a package with
/// the product's scripts.
Result<> flattenStaged(const QString &folder, const Product &product, OutputFile &output);
