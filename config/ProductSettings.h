// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/EditorXmlData.h"

struct Product;

/// The settings as a window with all pages of the product would collect them from its controls, so that
/// a package made without a window is the same as one made with it. For the Reader, what only the
/// Editor's pages offer becomes false, "2" (any login domain) or empty. Plug-ins come in display order,
/// unknown ones last; a ribbon or quick-access bar that is as shipped becomes an empty element. Unlike the
/// window, it carries on what only a document can say: an attachment mode as a number or as "Enabled" or
/// "Disabled", and values that no control offers.
EditorXmlData settingsForProduct(EditorXmlData data, const Product &product);
