// SPDX-License-Identifier: Apache-2.0
#include "pages/preferences/advertisement/CHandler_Prefer_Advertisement.h"

int CHandler_Prefer_Advertisement::GetTabId()
{
    return 1;
}

QString CHandler_Prefer_Advertisement::GetTabTitle() const
{
    return tr("Advertisement");
}

bool CHandler_Prefer_Advertisement::IsOnlyForEditor()
{
    return true;
}

QString CHandler_Prefer_Advertisement::GetInfoAnchorId()
{
    return QStringLiteral("Advertisement");
}
