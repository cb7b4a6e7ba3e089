// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "package/PackageInspection.h"

#include <QList>
#include <QString>

struct Product;

/// A warning and the file that it is about.
struct FileWarning
{
    QString file;
    BuildWarning warning;
};

/// For a document that was made for one product and is used for the other.
FileWarning otherProductWarning(const QString &document, const Product &made, const Product &wanted);
