// SPDX-License-Identifier: Apache-2.0
#include "profile/ProfileSettings.h"

#include "config/Product.h"
#include "config/SettingItems.h"
#include "profile/PayloadUuid.h"
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

NSDictionary *settingsPayload(const EditorXmlData &data, const Product &product)
{
    NSMutableDictionary *payload = [NSMutableDictionary dictionary];
    for (const auto section : {Section::Preferences, Section::Plugins})
        [payload setObject:itemsOf(section, data) forKey:toNSString(sectionName(section))];
    for (const auto section : {Section::Ribbon, Section::QuickAccessBar})
        [payload setObject:ribbonOf(section, data) forKey:toNSString(sectionName(section))];
    [payload setObject:toNSString(freshUuid()) forKey:@"PayloadUUID"];
    [payload setObject:toNSString(product.settingsType()) forKey:@"PayloadType"];
    [payload setObject:toNSString(product.bundleIdentifier) forKey:@"PayloadIdentifier"];
    return payload;
}

QString descriptionOf(const Product &product)
{
    return QStringLiteral("The configuration info will apply to %1, only for Subscription versions 2025.1+, "
                          "and Classic 13.1.8+.")
        .arg(product.title);
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

NSDictionary *profileDictionary(const EditorXmlData &data, const Product &product)
{
    NSMutableDictionary *profile = [NSMutableDictionary dictionary];
    [profile setObject:@"Configuration" forKey:@"PayloadType"];
    [profile setObject:[NSNumber numberWithInt:1] forKey:@"PayloadVersion"];
    [profile setObject:toNSString(data.payloadInfo.PayloadIdentifier) forKey:@"PayloadIdentifier"];
    [profile setObject:toNSString(data.payloadInfo.PayloadUUID) forKey:@"PayloadUUID"];
    [profile setObject:toNSString(product.title) forKey:@"PayloadDisplayName"];
    [profile setObject:[NSArray arrayWithObject:settingsPayload(data, product)] forKey:@"PayloadContent"];
    [profile setObject:@"Pelix Software Inc." forKey:@"PayloadOrganization"];
    [profile setObject:toNSString(descriptionOf(product)) forKey:@"PayloadDescription"];
    return profile;
}

void fillFromSettings(EditorXmlData &data, NSDictionary *settings, EmptyPolicy emptyPolicy)
{
    for (const auto section : {Section::Preferences, Section::Plugins})
        readItems(section, data, settings, emptyPolicy);
    for (const auto section : {Section::Ribbon, Section::QuickAccessBar})
        readElement(section, data, settings);
}
