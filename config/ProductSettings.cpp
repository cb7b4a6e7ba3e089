// SPDX-License-Identifier: Apache-2.0
#include "config/ProductSettings.h"

#include "config/KeptElement.h"
#include "config/Product.h"
#include "config/SettingItems.h"

namespace {

/// The window's pages make an element even of a ribbon that is as shipped.
void settleRibbon(const Setting &setting, EditorXmlData &data)
{
    QDomElement &element = elementOf(setting, data);
    if (element.isNull())
        element = keptElement(QDomDocument().createElement(elementName(setting.place.section)));
}

void settle(const Setting &setting, EditorXmlData &data, const Product &product)
{
    if (std::holds_alternative<QDomElement EditorXmlData::*>(setting.member))
        settleRibbon(setting, data);
    if (setting.settle)
        setting.settle(data, product);
    if (setting.isOnlyForEditor && !product.isEditor())
        collectNothing(setting, data);
}

} // namespace

EditorXmlData settingsForProduct(EditorXmlData data, const Product &product)
{
    for (const Setting &setting : settings())
        settle(setting, data, product);
    return data;
}
