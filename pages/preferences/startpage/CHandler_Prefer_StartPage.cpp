// SPDX-License-Identifier: Apache-2.0
#include "pages/preferences/startpage/CHandler_Prefer_StartPage.h"

int CHandler_Prefer_StartPage::GetTabId()
{
    return 5;
}

QString CHandler_Prefer_StartPage::GetTabTitle() const
{
    return tr("Start Page");
}

bool CHandler_Prefer_StartPage::IsOnlyForEditor()
{
    return false;
}

QString CHandler_Prefer_StartPage::GetInfoAnchorId()
{
    return QStringLiteral("Start Page");
}
