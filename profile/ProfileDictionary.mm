// SPDX-License-Identifier: Apache-2.0
#include "profile/propertylist/FoundationText.h"

#include "profile/ProfileDictionary.h"

#include "config/Product.h"
#include "config/SettingItems.h"
#include "profile/FreshUuid.h"
#include "profile/propertylist/PropertyListBridge.h"

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

NSArray *itemsOf(Setting::Section section, const EditorXmlData &data)
{
    NSMutableArray *items = [NSMutableArray array];
    for (const SettingItem &item : profileItems(section))
        [items addObject:single(toNSString(elementName(section)), dictionaryOf(item, data))];
    return items;
}

NSDictionary *ribbonOf(Setting::Section section, const EditorXmlData &data)
{
    const QDomElement &element = elementOf(settingIn(section), data);
    return single(toNSString(elementName(section)), QDomElementToNSDictionary(element));
}

NSDictionary *settingsPayload(const EditorXmlData &data, const Product &product)
{
    NSMutableDictionary *payload = [NSMutableDictionary dictionary];
    for (const auto section : {Setting::Section::Preferences, Setting::Section::Plugins})
        [payload setObject:itemsOf(section, data) forKey:toNSString(sectionName(section))];
    for (const auto section : {Setting::Section::Ribbon, Setting::Section::QuickAccessBar})
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
