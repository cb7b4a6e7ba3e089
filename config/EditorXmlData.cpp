// SPDX-License-Identifier: Apache-2.0
#include "config/EditorXmlData.h"

#include "config/Settings.h"

#include <algorithm>

EditorXmlData theEditorXmlData;

void EditorXmlData::Clear()
{
    for (const Setting &setting : settings()) {
        if (setting.isCollectedAnew)
            reset(setting, *this);
    }
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
    return first.payloadInfo == second.payloadInfo &&
           std::all_of(settings().begin(), settings().end(),
                       [&](const Setting &setting) { return sameValue(setting, first, second); });
}
