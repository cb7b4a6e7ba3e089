// SPDX-License-Identifier: Apache-2.0
#include "config/EditorXmlData.h"

#include "config/RecordFields.h"

#include <algorithm>

EditorXmlData theEditorXmlData;

void EditorXmlData::Clear()
{
    const EditorXmlData defaults;
    bShowStartPage = defaults.bShowStartPage;
    bRemoveAdvertise = defaults.bRemoveAdvertise;
    strDisableOpenSaveFileAttach = defaults.strDisableOpenSaveFileAttach;
    nFileAttachmentsMode = defaults.nFileAttachmentsMode;
    strBuiltInPermList = defaults.strBuiltInPermList;
    strUnloadPluginArray = defaults.strUnloadPluginArray;
    bMIPCheckPolicySet = defaults.bMIPCheckPolicySet;
    nMIPCheckPolicyOnDocSave = defaults.nMIPCheckPolicyOnDocSave;
    elemRibbonCategory = {};
    elemQuickAccessBar = {};
}

bool operator==(const ProfilePayloadInfo &first, const ProfilePayloadInfo &second)
{
    return first.PayloadDisplayName == second.PayloadDisplayName &&
           first.PayloadIdentifier == second.PayloadIdentifier && first.PayloadUUID == second.PayloadUUID &&
           first.PayloadOrganization == second.PayloadOrganization &&
           first.PayloadDescription == second.PayloadDescription;
}

bool operator==(const EditorXmlData &first, const EditorXmlData &second)
{
    const auto &fields = recordFields();
    return first.payloadInfo == second.payloadInfo &&
           std::all_of(fields.begin(), fields.end(),
                       [&](const RecordField &field) { return sameValue(field, first, second); });
}
