// SPDX-License-Identifier: Apache-2.0
#include "pages/preferences/mip/CHandler_Prefer_AIP.h"

int CHandler_Prefer_AIP::GetTabId()
{
    return 2;
}

QString CHandler_Prefer_AIP::GetTabTitle() const
{
    return tr("Microsoft Information Protection (MIP)");
}

bool CHandler_Prefer_AIP::IsOnlyForEditor()
{
    return false;
}

QString CHandler_Prefer_AIP::GetInfoAnchorId()
{
    return QStringLiteral("AIP Default and Mandatory Labeling");
}
