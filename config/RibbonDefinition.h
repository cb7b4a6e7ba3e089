// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDomDocument>

struct Product;

/// The ribbon of the products as it ships: ":/EditorXml/EditorXml/RibbonQuintorUI_Init.xml". Below the root
/// "RibbonUI" stand one TabElements and the Category elements, in these Panel, in these and in TabElements
/// Control, in these SubItem. Each has Name (what the product calls it), Title (what people read) and, when
/// only one product has it, OnlyEditor="1" or OnlyReader="1".

/// The definition's document, read once and shared, so do not change it; null when it cannot be read or is
/// no ribbon. One thread.
QDomDocument ribbonDefinition();

/// Whether the product has the element.
bool existsInProduct(const QDomElement &element, const Product &product);

/// Whether the product that is being configured in the window has it.
bool existsInProduct(const QDomElement &element);
