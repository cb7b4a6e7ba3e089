// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLatin1String>
#include <QString>

/// What sets the two products apart on a command line and in a file.
struct Product
{
    bool editor;
    QLatin1String word;        ///< value of --product
    QLatin1String title;       ///< for people, and what an installer calls itself
    QLatin1String rootElement; ///< of the configuration document
};

const Product &productOf(bool editor);

/// The product whose member `key` equals the text, or null.
const Product *findProduct(QLatin1String Product::*key, const QString &text);
