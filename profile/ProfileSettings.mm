// SPDX-License-Identifier: Apache-2.0
#include "profile/ProfileSettings.h"

#include "config/EditorXmlData.h"
#include "profile/PropertyListBridge.h"
#include "profile/PropertyListValues.h"

using ConfigGenerator::EmptyPolicy;

namespace
{

void readPolicyOnSave(EditorXmlData &data, NSDictionary *item)
{
    id mode = memberOf(item, @"Mode");
    data.bMIPCheckPolicySet = mode != nil && ![mode isKindOfClass:[NSNull class]];
    data.nMIPCheckPolicyOnDocSave = data.bMIPCheckPolicySet ? integerIn(item, @"Mode") : -1;
}

void readAttachmentPermissions(EditorXmlData &data, NSDictionary *item)
{
    data.bDisableOpenFileAll = integerIn(item, @"Mode") != 0;
    data.nFileAttachmentsMode = integerIn(item, @"DisableOpenSaveFileAttach");
    data.strBuiltInPermList = textIn(item, @"BuiltInPermList");
}

/// A flag or a text of the record that one key of an item holds.
template <bool EditorXmlData::*member> void readMode(EditorXmlData &data, NSDictionary *item)
{
    data.*member = integerIn(item, @"Mode") != 0;
}

template <QString EditorXmlData::*member> void readString(EditorXmlData &data, NSDictionary *item)
{
    data.*member = textIn(item, @"String");
}

struct PreferenceReader {
    NSString *text;
    void (*read)(EditorXmlData &data, NSDictionary *item);
};

const PreferenceReader preferenceReaders[] = {
    {@"StartPage", readMode<&EditorXmlData::bShowStartPage>},
    {@"Advertise", [](EditorXmlData &data,
                      NSDictionary *item) { data.bRemoveAdvertise = integerIn(item, @"Disable") != 0; }},
    {@"bMIPCheckPolicyOnDocSave", readPolicyOnSave},
    {@"AuthLibrary", [](EditorXmlData &data,
                        NSDictionary *item) { data.nAuthLibrary = integerIn(item, @"Mode") == 1 ? 1 : 0; }},
    {@"DefaultLaunchAttachmentPerms", readAttachmentPermissions},
    {@"HideMyApps", readMode<&EditorXmlData::bHideMyApps>},
    {@"iManage10loginMethod",
     [](EditorXmlData &data, NSDictionary *item) { data.bUseOAuth2 = integerIn(item, @"UseOAuth2") != 0; }},
    {@"LoginDomain", readString<&EditorXmlData::strLoginDomain>},
    {@"LoginDomainList", readString<&EditorXmlData::strLoginDomainList>},
    {@"SupportExtSSO", readMode<&EditorXmlData::bSupportExtSSO>},
};

/// What generation writes for a policy that is not set.
bool isEmptyPolicy(NSDictionary *item)
{
    return [@"bMIPCheckPolicyOnDocSave" isEqual:memberOf(item, @"Text")] &&
           [@"" isEqual:memberOf(item, @"Mode")];
}

void unsetPolicyOnSave(EditorXmlData &data)
{
    data.bMIPCheckPolicySet = false;
    data.nMIPCheckPolicyOnDocSave = -1;
}

void readPreference(EditorXmlData &data, NSDictionary *item, EmptyPolicy emptyPolicy)
{
    id text = memberOf(item, @"Text");
    for (const PreferenceReader &reader : preferenceReaders) {
        if ([reader.text isEqual:text])
            reader.read(data, item);
    }
    if (emptyPolicy == EmptyPolicy::NotSet && isEmptyPolicy(item))
        unsetPolicyOnSave(data);
}

void readPlugin(EditorXmlData &data, NSDictionary *item)
{
    if ([@"Plugin" isEqual:memberOf(item, @"Text")])
        data.strUnloadPluginArray = textIn(item, @"UnloadPluginArray");
}

} // namespace

void fillFromSettings(EditorXmlData &data, NSDictionary *settings, EmptyPolicy emptyPolicy)
{
    NSArray *preferences = arrayIn(settings, @"Preferences");
    for (NSUInteger i = 0; i < [preferences count]; ++i)
        readPreference(data, dictionaryIn([preferences objectAtIndex:i], @"Preference"), emptyPolicy);
    NSArray *plugins = arrayIn(settings, @"Plugins");
    for (NSUInteger i = 0; i < [plugins count]; ++i)
        readPlugin(data, dictionaryIn([plugins objectAtIndex:i], @"Plugin"));

    NSDictionary *ribbon = dictionaryIn(dictionaryIn(settings, @"RibbonSetRibbonCategory"), @"RibbonUI");
    data.elemRibbonCategory = QDomElementFromNSDictionary(QStringLiteral("RibbonUI"), ribbon);
    NSDictionary *bar = dictionaryIn(dictionaryIn(settings, @"RibbonSetTabElements"), @"QuickAccessBar");
    data.elemQuickAccessBar = QDomElementFromNSDictionary(QStringLiteral("QuickAccessBar"), bar);
}
