// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/Settings.h"

#include <vector>

class QDomDocument;
struct Product;

/// Which settings of a product's document change.
struct DocumentChange
{
    const Product &product;
    EditorXmlData before;               ///< as the document was read
    EditorXmlData after;                ///< as it is to be read from now on
    std::vector<const Setting *> named; ///< are written also where both are the same
};

/// Writes what changes into the document and leaves all else as it stands: other settings, what nobody reads,
/// comments. Where an item is missing it is added with all its attributes.
void change(QDomDocument &document, const DocumentChange &wanted);
