// SPDX-License-Identifier: Apache-2.0
#include "tests/config/RecordSamples.h"

#include "config/KeptElement.h"
#include "config/Settings.h"

QDomElement RecordSamples::element(const QByteArray &xml)
{
    QDomDocument document;
    if (!document.setContent(xml))
        qFatal("not well-formed: %s", xml.constData());
    return keptElement(document.documentElement());
}

namespace {

/// Turns a flag over and takes the last of the values that are offered.
void change(const Setting &setting, EditorXmlData &data)
{
    const auto *flag = std::get_if<bool EditorXmlData::*>(&setting.member);
    const auto *number = std::get_if<int EditorXmlData::*>(&setting.member);
    const auto *text = std::get_if<QString EditorXmlData::*>(&setting.member);
    if (flag)
        data.**flag = !(data.**flag);
    else if (number)
        data.**number = QString(setting.choices.back().value).toInt();
    else if (text && !setting.choices.empty())
        data.**text = setting.choices.back().value;
}

} // namespace

EditorXmlData RecordSamples::everythingChanged()
{
    EditorXmlData data;
    for (const Setting &setting : settings())
        change(setting, data);
    data.strDisableOpenSaveFileAttach = QStringLiteral("Disabled");
    data.strBuiltInPermList = QStringLiteral("version:1|.ade:3|.app:3");
    data.strUnloadPluginArray = QStringLiteral("PelixOcr.dylib;");
    data.elemRibbonCategory = element("<RibbonUI><Category Text=\"Home\" Hidden=\"1\"/></RibbonUI>");
    data.elemQuickAccessBar = element("<QuickAccessBar><control action=\"A\"/></QuickAccessBar>");
    data.strLoginDomainList = QStringLiteral("@example.com;@example.org");
    return data;
}
