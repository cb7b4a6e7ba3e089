// SPDX-License-Identifier: Apache-2.0
#include "config/SettingItems.h"

#include "config/XmlTree.h"

#include <algorithm>
#include <array>

namespace {

using Section = Setting::Section;
constexpr std::size_t sectionCount = 5;

std::vector<const Setting *> inTurns()
{
    std::vector<const Setting *> found;
    for (const Setting &setting : settings()) {
        if (setting.control.turn > 0)
            found.push_back(&setting);
    }
    std::sort(found.begin(), found.end(), [](const Setting *first, const Setting *second) {
        return first->control.turn < second->control.turn;
    });
    return found;
}

void addToItem(std::vector<SettingItem> &items, const Setting &setting)
{
    const auto item = std::find_if(items.begin(), items.end(),
                                   [&](const SettingItem &known) { return known.key == setting.place.key; });
    if (item == items.end())
        items.push_back({setting.place.key, {&setting}});
    else
        item->settings.push_back(&setting);
}

using ItemsBySection = std::array<std::vector<SettingItem>, sectionCount>;

std::size_t indexOf(Section section)
{
    return static_cast<std::size_t>(section);
}

ItemsBySection itemsOf(bool (*isHeld)(const Setting &))
{
    ItemsBySection sections;
    for (const Setting &setting : settings()) {
        if (isHeld(setting))
            addToItem(sections.at(indexOf(setting.place.section)), setting);
    }
    for (std::vector<SettingItem> &items : sections) {
        std::sort(items.begin(), items.end(), [](const SettingItem &first, const SettingItem &second) {
            return first.settings.front()->place.item < second.settings.front()->place.item;
        });
    }
    return sections;
}

const std::array<QLatin1String, sectionCount> &namesOfSections()
{
    static const std::array<QLatin1String, sectionCount> names = {
        QLatin1String("Preferences"), QLatin1String("Plugins"), QLatin1String("Installation_Options"),
        QLatin1String("RibbonSetRibbonCategory"), QLatin1String("RibbonSetTabElements")};
    return names;
}

} // namespace

const std::vector<const Setting *> &settingsInTurns()
{
    static const std::vector<const Setting *> all = inTurns();
    return all;
}

const std::vector<SettingItem> &documentItems(Section section)
{
    static const ItemsBySection all =
        itemsOf([](const Setting &held) { return held.document.read != nullptr; });
    return all.at(indexOf(section));
}

const std::vector<SettingItem> &profileItems(Section section)
{
    static const ItemsBySection all =
        itemsOf([](const Setting &held) { return held.profile.read != nullptr; });
    return all.at(indexOf(section));
}

const Setting &settingIn(Section section)
{
    return *std::find_if(settings().begin(), settings().end(),
                         [section](const Setting &one) { return one.place.section == section; });
}

QLatin1String sectionName(Section section)
{
    return namesOfSections().at(indexOf(section));
}

QStringList sectionNames()
{
    return {namesOfSections().begin(), namesOfSections().end()};
}

QLatin1String elementName(Section section)
{
    static const std::array<QLatin1String, sectionCount> names = {
        QLatin1String("Preference"), QLatin1String("Plugin"), QLatin1String("Installation_Option"),
        QLatin1String("RibbonUI"), QLatin1String("QuickAccessBar")};
    return names.at(indexOf(section));
}

SectionElements::SectionElements(const QDomElement &root)
    : m_elements(XmlTree::firstNamed(root, sectionNames()))
{
}

QDomElement &SectionElements::operator[](Section section)
{
    return m_elements[static_cast<int>(section)];
}
