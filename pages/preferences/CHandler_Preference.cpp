// SPDX-License-Identifier: Apache-2.0
#include "pages/preferences/CHandler_Preference.h"

#include "pages/HelpPage.h"
#include "pages/IPreferenceHandler.h"
#include "pages/preferences/advertisement/CHandler_Prefer_Advertisement.h"
#include "pages/preferences/imanage/CHandler_Prefer_IManage.h"
#include "pages/preferences/logindomain/CHandler_Prefer_LoginDomain.h"
#include "pages/preferences/mip/CHandler_Prefer_AIP.h"
#include "pages/preferences/myapps/CHandler_Prefer_MyApps.h"
#include "pages/preferences/security/CHandler_Prefer_Security.h"
#include "pages/preferences/startpage/CHandler_Prefer_StartPage.h"

int CHandler_Preference::GetTabId()
{
    return 3;
}

QString CHandler_Preference::GetTabName()
{
    return QStringLiteral("Preferences");
}

QString CHandler_Preference::GetTabTitle() const
{
    return tr("Preferences");
}

QString CHandler_Preference::GetTabTooltip() const
{
    return tr("Allow you to customize some basic settings.");
}

QString CHandler_Preference::GetTabIcon()
{
    return QStringLiteral(":/img/preference.png");
}

bool CHandler_Preference::SupportsProfile()
{
    return true;
}

QVariant CHandler_Preference::GetProperty(const QString &objectName)
{
    const QVariant value = ICutsomizationHandler::GetProperty(objectName);
    if (value.isValid() || !page())
        return value;
    return page()->GetProperty(objectName);
}

QString CHandler_Preference::GetInfoName()
{
    const std::shared_ptr<IPreferenceHandler> current = page() ? page()->GetCurrentHandler() : nullptr;
    const QString anchor = current ? current->GetInfoAnchorId() : QString();
    if (anchor.isEmpty())
        return encodedHelpPage(QStringLiteral("Preferences.html"));
    return encodedHelpPage(QStringLiteral("Preferences.html#%1").arg(anchor));
}

tab_preference *CHandler_Preference::makePage() const
{
    auto *made = new tab_preference(isEditor(), nullptr);
    made->Register(std::make_shared<CHandler_Prefer_Advertisement>(isEditor()));
    made->Register(std::make_shared<CHandler_Prefer_AIP>(isEditor()));
    made->Register(std::make_shared<CHandler_Prefer_LoginDomain>(isEditor()));
    made->Register(std::make_shared<CHandler_Prefer_IManage>(isEditor()));
    made->Register(std::make_shared<CHandler_Prefer_MyApps>(isEditor()));
    made->Register(std::make_shared<CHandler_Prefer_Security>(isEditor()));
    made->Register(std::make_shared<CHandler_Prefer_StartPage>(isEditor()));
    return made;
}

void CHandler_Preference::fillPage(tab_preference &page, const EditorXmlData &data)
{
    page.ImportProperty(data);
}
