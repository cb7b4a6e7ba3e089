// SPDX-License-Identifier: Apache-2.0
#include "pages/preferences/imanage/CHandler_Prefer_IManage.h"

int CHandler_Prefer_IManage::GetTabId()
{
    return 3;
}

QString CHandler_Prefer_IManage::GetTabTitle() const
{
    return tr("Enable iManage10 SSO Login");
}

bool CHandler_Prefer_IManage::IsOnlyForEditor()
{
    return true;
}

QString CHandler_Prefer_IManage::GetInfoAnchorId()
{
    return QStringLiteral("Enable iManage10 SSO Login");
}
