// SPDX-License-Identifier: Apache-2.0
#include "pages/preferences/security/CHandler_Prefer_Security.h"

#include "config/EditorXmlData.h"

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

void CHandler_Prefer_Security::fillPage(tab_prefer_security &page, const EditorXmlData &data)
{
    page.setAttachmentMode(data.nFileAttachmentsMode);
    page.setFileTypes(data.strBuiltInPermList);
    page.setActionsDisabled(data.bDisableOpenFileAll);
}
