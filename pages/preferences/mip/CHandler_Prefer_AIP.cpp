// SPDX-License-Identifier: Apache-2.0
#include "pages/preferences/mip/CHandler_Prefer_AIP.h"

#include "config/EditorXmlData.h"

namespace {

/// Row of the list of policies that the record's value stands for; the first one stands for none.
int policyIndex(const EditorXmlData &data)
{
    const int policy = data.bMIPCheckPolicySet ? data.nMIPCheckPolicyOnDocSave : -1;
    return policy == 0 || policy == 1 ? policy + 1 : 0;
}

} // namespace

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

void CHandler_Prefer_AIP::fillPage(tab_prefer_AIP &page, const EditorXmlData &data)
{
    page.setPolicy(policyIndex(data));
    page.setAuthLibrary(data.nAuthLibrary == 1 ? 1 : 0);
    page.setExternalBrowserUsed(data.bSupportExtSSO);
}
