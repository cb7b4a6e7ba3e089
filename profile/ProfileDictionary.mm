// SPDX-License-Identifier: Apache-2.0
#include "profile/ProfileDictionary.h"

#include "config/EditorXmlData.h"
#include "config/Product.h"
#include "profile/PayloadUuid.h"
#include "profile/ProfileSettings.h"
#include "profile/SettingsPayload.h"
#include "profile/propertylist/FoundationText.h"

using Scope = ProfileForm::Scope;
using Style = ProfileForm::Style;

namespace
{

NSNumber *firstVersion() { return [NSNumber numberWithInt:1]; }

/// What tells a payload from others.
struct PayloadName
{
    QString type;
    QString identifier;
};

QString payloadUuid(const EditorXmlData &data, const ProfileForm &form, const QString &type)
{
    return form.hasStableUuid ? stablePayloadUuid(data.payloadInfo.PayloadUUID, type) : freshUuid();
}

/// What makes a payload of its contents.
NSMutableDictionary *payloadOf(NSDictionary *contents, const PayloadName &name, const EditorXmlData &data,
                               const ProfileForm &form)
{
    NSMutableDictionary *payload = [NSMutableDictionary dictionaryWithDictionary:contents];
    [payload setObject:toNSString(payloadUuid(data, form, name.type)) forKey:@"PayloadUUID"];
    [payload setObject:toNSString(name.type) forKey:@"PayloadType"];
    [payload setObject:toNSString(name.identifier) forKey:@"PayloadIdentifier"];
    if (form.hasPayloadVersion)
        [payload setObject:firstVersion() forKey:@"PayloadVersion"];
    return payload;
}

/// Preferences without all of these dictionaries around them are installed, and have no effect.
NSDictionary *forcedPreferences(NSDictionary *settings, const Product &product)
{
    NSDictionary *forced = [NSDictionary dictionaryWithObject:settings forKey:@"mcx_preference_settings"];
    NSDictionary *domain = [NSDictionary dictionaryWithObject:[NSArray arrayWithObject:forced]
                                                       forKey:@"Forced"];
    NSDictionary *domains = [NSDictionary dictionaryWithObject:domain
                                                        forKey:toNSString(product.settingsType())];
    return [NSDictionary dictionaryWithObject:domains forKey:@"PayloadContent"];
}

NSMutableDictionary *settingsPayload(const EditorXmlData &data, const Product &product, ProfileForm form)
{
    NSDictionary *settings = settingsDictionary(data);
    if (form.style == Style::Payload)
        return payloadOf(settings, {product.settingsType(), product.bundleIdentifier}, data, form);
    form.hasPayloadVersion = true;
    return payloadOf(forcedPreferences(settings, product),
                     {managedPreferencesType(), managedPreferencesIdentifier(product)}, data, form);
}

QString usualDescription(const Product &product)
{
    return QStringLiteral("The configuration info will apply to %1, only for Subscription versions 2025.1+, "
                          "and Classic 13.1.8+.")
        .arg(product.title);
}

NSString *textOr(const QString &text, const QString &usual)
{
    return toNSString(text.isEmpty() ? usual : text);
}

void describe(NSMutableDictionary *profile, const Product &product, const ProfileForm &form)
{
    [profile setObject:textOr(form.displayName, product.title) forKey:@"PayloadDisplayName"];
    [profile setObject:textOr(form.organization, QStringLiteral("Pelix Software Inc."))
                forKey:@"PayloadOrganization"];
    [profile setObject:textOr(form.description, usualDescription(product)) forKey:@"PayloadDescription"];
}

void addRules(NSMutableDictionary *profile, const ProfileForm &form)
{
    if (form.scope != Scope::Unsaid)
        [profile setObject:form.scope == Scope::System ? @"System" : @"User" forKey:@"PayloadScope"];
    if (form.isRemovalDisallowed)
        [profile setObject:[NSNumber numberWithBool:YES] forKey:@"PayloadRemovalDisallowed"];
}

} // namespace

NSDictionary *profileDictionary(const EditorXmlData &data, const Product &product, const ProfileForm &form)
{
    NSMutableDictionary *profile = [NSMutableDictionary dictionary];
    [profile setObject:@"Configuration" forKey:@"PayloadType"];
    [profile setObject:firstVersion() forKey:@"PayloadVersion"];
    [profile setObject:toNSString(data.payloadInfo.PayloadIdentifier) forKey:@"PayloadIdentifier"];
    [profile setObject:toNSString(data.payloadInfo.PayloadUUID) forKey:@"PayloadUUID"];
    [profile setObject:[NSArray arrayWithObject:settingsPayload(data, product, form)]
                forKey:@"PayloadContent"];
    describe(profile, product, form);
    addRules(profile, form);
    return profile;
}

NSDictionary *payloadDictionary(const EditorXmlData &data, const Product &product, const ProfileForm &form)
{
    NSMutableDictionary *payload = settingsPayload(data, product, form);
    [payload setObject:firstVersion() forKey:@"PayloadVersion"];
    [payload setObject:[NSNumber numberWithBool:YES] forKey:@"PayloadEnabled"];
    [payload setObject:textOr(form.displayName, product.title) forKey:@"PayloadDisplayName"];
    return payload;
}
