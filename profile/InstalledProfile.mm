// SPDX-License-Identifier: Apache-2.0
#include "profile/InstalledProfile.h"

#include "profile/propertylist/FoundationPropertyList.h"

bool hasItemOf(id profile, NSString *payloadIdentifier)
{
    NSArray *items = arrayIn(profile, @"ProfileItems");
    for (NSUInteger i = 0; i < [items count]; ++i) {
        if ([payloadIdentifier isEqual:memberOf([items objectAtIndex:i], @"PayloadIdentifier")])
            return true;
    }
    return false;
}

ConfigGenerator::InstalledIdentity installedIdentity(NSArray *profiles, NSString *payloadIdentifier)
{
    ConfigGenerator::InstalledIdentity found;
    for (NSUInteger i = 0; i < [profiles count]; ++i) {
        id profile = [profiles objectAtIndex:i];
        if (!hasItemOf(profile, payloadIdentifier))
            continue;
        found.uuid = textIn(profile, @"ProfileUUID");
        if (memberOf(profile, @"ProfileIdentifier") == nil)
            continue;
        found.identifier = textIn(profile, @"ProfileIdentifier");
        break;
    }
    return found;
}
