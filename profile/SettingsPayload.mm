// SPDX-License-Identifier: Apache-2.0
#include "profile/SettingsPayload.h"

#include "config/EditorXmlData.h"
#include "config/Product.h"
#include "profile/propertylist/CocoaLog.h"
#include "profile/propertylist/FoundationPropertyList.h"
#include "profile/propertylist/FoundationText.h"

namespace
{

/// The system wraps managed preferences once more when it lists them.
NSDictionary *domainsIn(id payload)
{
    NSDictionary *content = dictionaryIn(payload, @"PayloadContent");
    NSDictionary *listed = dictionaryIn(content, @"PayloadContentManagedPreferences");
    return listed == nil ? content : listed;
}

void addPreferences(NSArray *items, NSMutableArray *layers)
{
    for (NSUInteger i = 0; i < [items count]; ++i) {
        NSDictionary *settings = dictionaryIn([items objectAtIndex:i], @"mcx_preference_settings");
        if (settings != nil)
            [layers addObject:settings];
    }
}

/// What is forced wins over what is set once.
NSArray *managedLayers(id payload, const Product &product)
{
    NSMutableArray *layers = [NSMutableArray array];
    NSDictionary *domain = dictionaryIn(domainsIn(payload), toNSString(product.settingsType()));
    for (NSString *manner : {@"Set-Once", @"Forced"})
        addPreferences(arrayIn(domain, manner), layers);
    return layers;
}

/// The identifier of the settings decides; a management may have put its own in that place.
bool isPayloadOf(id payload, const Product &product)
{
    const QString identifier = textIn(payload, @"PayloadIdentifier");
    if (const Product *named = Product::find(&Product::bundleIdentifier, identifier))
        return named == &product;
    return textIn(payload, @"PayloadType") == product.settingsType();
}

NSArray *layersOf(id payload, const Product &product)
{
    if (textIn(payload, @"PayloadType") == managedPreferencesType())
        return managedLayers(payload, product);
    if (!isPayloadOf(payload, product))
        return [NSArray array];
    NSDictionary *listed = dictionaryIn(payload, @"PayloadContent");
    return [NSArray arrayWithObject:listed == nil ? payload : listed];
}

FoundSettings settingsOf(const Product &product, NSArray *payloads)
{
    for (NSUInteger i = 0; i < [payloads count]; ++i) {
        NSArray *layers = layersOf([payloads objectAtIndex:i], product);
        if ([layers count] > 0)
            return {&product, layers};
    }
    return {};
}

FoundSettings settingsOfAny(NSArray *payloads)
{
    for (NSUInteger i = 0; i < [payloads count]; ++i) {
        NSArray *one = [NSArray arrayWithObject:[payloads objectAtIndex:i]];
        for (const Product &product : Product::all()) {
            if (const FoundSettings found = settingsOf(product, one); found.product)
                return found;
        }
    }
    return {};
}

} // namespace

QString managedPreferencesType() { return QStringLiteral("com.apple.ManagedClient.preferences"); }

QString managedPreferencesIdentifier(const Product &product)
{
    return product.bundleIdentifier + QStringLiteral(".mcx");
}

FoundSettings findSettings(NSArray *payloads, const Product *wanted)
{
    if (!wanted)
        return settingsOfAny(payloads);
    const FoundSettings found = settingsOf(*wanted, payloads);
    return found.product ? found : settingsOf(wanted->other(), payloads);
}

void readIdentity(ProfilePayloadInfo &info, NSDictionary *profile, NSString *prefix)
{
    const auto text = [&](NSString *key) { return textIn(profile, [prefix stringByAppendingString:key]); };
    info.PayloadDisplayName = text(@"DisplayName");
    info.PayloadIdentifier = text(@"Identifier");
    info.PayloadUUID = text(@"UUID");
    info.PayloadOrganization = text(@"Organization");
    info.PayloadDescription = text(@"Description");
    cocoaLog(@"Profile Name: %@", toNSString(info.PayloadDisplayName));
    cocoaLog(@"Profile Identifier: %@", toNSString(info.PayloadIdentifier));
    cocoaLog(@"Profile UUID: %@", toNSString(info.PayloadUUID));
    cocoaLog(@"Profile Organization: %@", toNSString(info.PayloadOrganization));
    cocoaLog(@"Profile Description: %@", toNSString(info.PayloadDescription));
}
