// SPDX-License-Identifier: Apache-2.0
#include "pages/preferences/myapps/CHandler_Prefer_MyApps.h"

int CHandler_Prefer_MyApps::GetTabId()
{
    return 4;
}

QString CHandler_Prefer_MyApps::GetTabTitle() const
{
    return tr("Hide My Apps");
}

bool CHandler_Prefer_MyApps::IsOnlyForEditor()
{
    return true;
}

QString CHandler_Prefer_MyApps::GetInfoAnchorId()
{
    return {};
}
