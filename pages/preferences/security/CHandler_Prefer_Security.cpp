// SPDX-License-Identifier: Apache-2.0
#include "pages/preferences/security/CHandler_Prefer_Security.h"

int CHandler_Prefer_Security::GetTabId()
{
    return 6;
}

QString CHandler_Prefer_Security::GetTabTitle() const
{
    return tr("Security Setting");
}

bool CHandler_Prefer_Security::IsOnlyForEditor()
{
    return false;
}

QString CHandler_Prefer_Security::GetInfoAnchorId()
{
    return QStringLiteral("Security Settings");
}
