// SPDX-License-Identifier: Apache-2.0
#include "config/ProductSettings.h"

#include "config/KeptElement.h"
#include "config/SettingItems.h"

namespace {

/// The window's pages make an element even of a ribbon that is as shipped.
void settleRibbon(const Setting &setting, EditorXmlData &data)
{
    QDomElement &element = elementOf(setting, data);
    if (element.isNull())
        element = keptElement(QDomDocument().createElement(elementName(setting.place.section)));
}

void settle(const Setting &setting, EditorXmlData &data, bool editor)
{
    if (std::holds_alternative<QDomElement EditorXmlData::*>(setting.member))
        settleRibbon(setting, data);
    if (setting.settle)
        setting.settle(data, editor);
    if (setting.isOnlyForEditor && !editor)
        collectNothing(setting, data);
}

} // namespace

EditorXmlData settingsForProduct(EditorXmlData data, bool editor)
{
    for (const Setting &setting : settings())
        settle(setting, data, editor);
    return data;
}
