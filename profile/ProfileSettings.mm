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

void fillFromSettings(EditorXmlData &data, NSDictionary *settings, EmptyPolicy emptyPolicy)
{
    for (const auto section : {Section::Preferences, Section::Plugins})
        readItems(section, data, settings, emptyPolicy);
    for (const auto section : {Section::Ribbon, Section::QuickAccessBar})
        readElement(section, data, settings);
}
