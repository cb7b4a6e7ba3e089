// SPDX-License-Identifier: Apache-2.0
#include "profile/ProfileSettings.h"

#include "config/SettingItems.h"
#include "profile/propertylist/FoundationPropertyList.h"
#include "profile/propertylist/FoundationText.h"
#include "profile/propertylist/PropertyListBridge.h"

using ConfigGenerator::EmptyPolicy;
using Section = Setting::Section;

namespace
{

NSDictionary *single(NSString *key, id value) { return [NSDictionary dictionaryWithObject:value forKey:key]; }

id toObject(const std::variant<QString, int> &value)
{
    if (const int *number = std::get_if<int>(&value))
        return [NSNumber numberWithInt:*number];
    return toNSString(std::get<QString>(value));
}

NSDictionary *dictionaryOf(const SettingItem &item, const EditorXmlData &data)
{
    NSMutableDictionary *members = [NSMutableDictionary dictionaryWithObject:toNSString(item.key)
                                                                      forKey:@"Text"];
    for (const Setting *setting : item.settings)
        [members setObject:toObject(setting->profile.value(data))
                    forKey:toNSString(setting->place.attribute)];
    return members;
}

NSArray *itemsOf(Section section, const EditorXmlData &data)
{
    NSMutableArray *items = [NSMutableArray array];
    for (const SettingItem &item : profileItems(section))
        [items addObject:single(toNSString(elementName(section)), dictionaryOf(item, data))];
    return items;
}

NSDictionary *ribbonOf(Section section, const EditorXmlData &data)
{
    const QDomElement &element = elementOf(settingIn(section), data);
    return single(toNSString(elementName(section)), QDomElementToNSDictionary(element));
}

/// An empty text is what generation writes for what is not set.
bool isThere(id value, EmptyPolicy emptyPolicy)
{
    if (value == nil || [value isKindOfClass:[NSNull class]])
        return false;
    return emptyPolicy == EmptyPolicy::Off || ![@"" isEqual:value];
}

void readValue(const Setting &setting, EditorXmlData &data, NSDictionary *item, EmptyPolicy emptyPolicy)
{
    NSString *name = toNSString(setting.place.attribute);
    setting.profile.read(
        data, {isThere(memberOf(item, name), emptyPolicy), integerIn(item, name), textIn(item, name)});
}

void readItem(Section section, EditorXmlData &data, NSDictionary *item, EmptyPolicy emptyPolicy)
{
    const QString key = textIn(item, @"Text");
    for (const SettingItem &known : profileItems(section)) {
        if (key != known.key)
            continue;
        for (const Setting *setting : known.settings)
            readValue(*setting, data, item, emptyPolicy);
    }
}

void readItems(Section section, EditorXmlData &data, NSDictionary *settings, EmptyPolicy emptyPolicy)
{
    NSArray *items = arrayIn(settings, toNSString(sectionName(section)));
    for (NSUInteger i = 0; i < [items count]; ++i)
        readItem(section, data, dictionaryIn([items objectAtIndex:i], toNSString(elementName(section))),
                 emptyPolicy);
}

void readElement(Section section, EditorXmlData &data, NSDictionary *settings)
{
    const QLatin1String name = elementName(section);
    NSDictionary *parent = dictionaryIn(settings, toNSString(sectionName(section)));
    elementOf(settingIn(section), data) =
        QDomElementFromNSDictionary(name, dictionaryIn(parent, toNSString(name)));
}

} // namespace

NSDictionary *settingsDictionary(const EditorXmlData &data)
{
    NSMutableDictionary *settings = [NSMutableDictionary dictionary];
    for (const auto section : {Section::Preferences, Section::Plugins})
        [settings setObject:itemsOf(section, data) forKey:toNSString(sectionName(section))];
    for (const auto section : {Section::Ribbon, Section::QuickAccessBar})
        [settings setObject:ribbonOf(section, data) forKey:toNSString(sectionName(section))];
    return settings;
}

void fillFromSettings(EditorXmlData &data, NSDictionary *settings, EmptyPolicy emptyPolicy)
{
    for (const auto section : {Section::Preferences, Section::Plugins})
        readItems(section, data, settings, emptyPolicy);
    for (const auto section : {Section::Ribbon, Section::QuickAccessBar})
        readElement(section, data, settings);
}
