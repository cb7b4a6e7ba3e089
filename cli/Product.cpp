// SPDX-License-Identifier: Apache-2.0
#include "cli/Product.h"

#include <algorithm>
#include <array>

namespace {

const std::array<Product, 2> products = {{
    {true, QLatin1String("editor"), QLatin1String("Pelix PDF Editor"), QLatin1String("PelixPDFEditor")},
    {false, QLatin1String("reader"), QLatin1String("Pelix PDF Reader"), QLatin1String("PelixPDFReader")},
}};

} // namespace

const Product &productOf(bool editor)
{
    return editor ? products[0] : products[1];
}

const Product *findProduct(QLatin1String Product::*key, const QString &text)
{
    const auto found = std::find_if(products.begin(), products.end(),
                                    [&](const Product &product) { return product.*key == text; });
    return found == products.end() ? nullptr : &*found;
}
