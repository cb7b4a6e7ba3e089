// SPDX-License-Identifier: Apache-2.0
#include "profile/FoundationText.h"

#include "profile/ProfileDictionary.h"

#include "config/EditorXmlData.h"
#include "profile/FreshUuid.h"
#include "profile/ProfileProduct.h"
#include "profile/PropertyListBridge.h"

namespace
{

NSString *digit(bool on) { return on ? @"1" : @"0"; }

NSDictionary *single(NSString *key, id value) { return [NSDictionary dictionaryWithObject:value forKey:key]; }

NSDictionary *preference(NSString *text, NSString *key, id value)
{
    return single(@"Preference", [NSDictionary dictionaryWithObjectsAndKeys:text, @"Text", value, key, nil]);
}

/// An unset policy is the empty text; see EmptyPolicy for what it reads as.
id policyOnSave(const EditorXmlData &data)
{
    if (!data.bMIPCheckPolicySet)
        return @"";
    return [NSNumber numberWithInt:data.nMIPCheckPolicyOnDocSave];
}

NSDictionary *attachmentPermissions(const EditorXmlData &data)
{
    NSString *mode = toNSString(QString::number(data.nFileAttachmentsMode));
    return single(@"Preference",
                  [NSDictionary dictionaryWithObjectsAndKeys:@"DefaultLaunchAttachmentPerms", @"Text",
                                                             digit(data.bDisableOpenFileAll), @"Mode", mode,
                                                             @"DisableOpenSaveFileAttach",
                                                             toNSString(data.strBuiltInPermList),
                                                             @"BuiltInPermList", nil]);
}

NSArray *preferences(const EditorXmlData &data)
{
    return [NSArray
        arrayWithObjects:preference(@"StartPage", @"Mode", digit(data.bShowStartPage)),
                         preference(@"Advertise", @"Disable", digit(data.bRemoveAdvertise)),
                         preference(@"bMIPCheckPolicyOnDocSave", @"Mode", policyOnSave(data)),
                         preference(@"AuthLibrary", @"Mode", digit(data.nAuthLibrary == 1)),
                         attachmentPermissions(data),
                         preference(@"HideMyApps", @"Mode", digit(data.bHideMyApps)),
                         preference(@"iManage10loginMethod", @"UseOAuth2", digit(data.bUseOAuth2)),
                         preference(@"LoginDomain", @"String", toNSString(data.strLoginDomain)),
                         preference(@"LoginDomainList", @"String", toNSString(data.strLoginDomainList)),
                         preference(@"SupportExtSSO", @"Mode", digit(data.bSupportExtSSO)), nil];
}

NSArray *plugins(const EditorXmlData &data)
{
    NSDictionary *plugin =
        [NSDictionary dictionaryWithObjectsAndKeys:@"Plugin", @"Text", toNSString(data.strUnloadPluginArray),
                                                   @"UnloadPluginArray", nil];
    return [NSArray arrayWithObject:single(@"Plugin", plugin)];
}

NSDictionary *settingsPayload(const EditorXmlData &data, bool editor)
{
    NSMutableDictionary *payload = [NSMutableDictionary dictionary];
    [payload setObject:preferences(data) forKey:@"Preferences"];
    [payload setObject:plugins(data) forKey:@"Plugins"];
    [payload setObject:single(@"RibbonUI", QDomElementToNSDictionary(data.elemRibbonCategory))
                forKey:@"RibbonSetRibbonCategory"];
    [payload setObject:single(@"QuickAccessBar", QDomElementToNSDictionary(data.elemQuickAccessBar))
                forKey:@"RibbonSetTabElements"];
    [payload setObject:toNSString(freshUuid()) forKey:@"PayloadUUID"];
    [payload setObject:toNSString(ProfileProduct::settingsType(editor)) forKey:@"PayloadType"];
    [payload setObject:toNSString(ProfileProduct::bundleIdentifier(editor)) forKey:@"PayloadIdentifier"];
    return payload;
}

} // namespace

NSDictionary *profileDictionary(const EditorXmlData &data, bool editor)
{
    NSMutableDictionary *profile = [NSMutableDictionary dictionary];
    [profile setObject:@"Configuration" forKey:@"PayloadType"];
    [profile setObject:[NSNumber numberWithInt:1] forKey:@"PayloadVersion"];
    [profile setObject:toNSString(data.payloadInfo.PayloadIdentifier) forKey:@"PayloadIdentifier"];
    [profile setObject:toNSString(data.payloadInfo.PayloadUUID) forKey:@"PayloadUUID"];
    [profile setObject:toNSString(ProfileProduct::displayName(editor)) forKey:@"PayloadDisplayName"];
    [profile setObject:[NSArray arrayWithObject:settingsPayload(data, editor)] forKey:@"PayloadContent"];
    [profile setObject:toNSString(ProfileProduct::organization()) forKey:@"PayloadOrganization"];
    [profile setObject:toNSString(ProfileProduct::description(editor)) forKey:@"PayloadDescription"];
    return profile;
}
