// SPDX-License-Identifier: Apache-2.0
#include "pages/preferences/logindomain/CHandler_Prefer_LoginDomain.h"

#include "config/EditorXmlData.h"
#include "config/LoginDomain.h"

int CHandler_Prefer_LoginDomain::GetTabId()
{
    return 7;
}

QString CHandler_Prefer_LoginDomain::GetTabTitle() const
{
    return tr("Configure Login Domain");
}

bool CHandler_Prefer_LoginDomain::IsOnlyForEditor()
{
    return true;
}

QVariant CHandler_Prefer_LoginDomain::GetProperty(const QString &objectName)
{
    if (page() && objectName == QLatin1String("tableView_domains"))
        return page()->domains().join(QLatin1Char(';'));
    return {};
}

QString CHandler_Prefer_LoginDomain::GetInfoAnchorId()
{
    return QStringLiteral("Configure Login Domain");
}

void CHandler_Prefer_LoginDomain::fillPage(tab_prefer_login_domain &page, const EditorXmlData &data)
{
    PreferHandler::fillPage(page, data);
    page.setDomains(loginDomainsOf(data.strLoginDomainList));
}
