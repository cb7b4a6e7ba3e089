// SPDX-License-Identifier: Apache-2.0
#include "pages/installoption/CHandler_InstallOption.h"

#include "pages/HelpPage.h"

int CHandler_InstallOption::GetTabId()
{
    return 1;
}

QString CHandler_InstallOption::GetTabName()
{
    return QStringLiteral("Installation Options");
}

QString CHandler_InstallOption::GetTabTitle() const
{
    return tr("Installation Options");
}

QString CHandler_InstallOption::GetTabTooltip() const
{
    return tr("Allow you to change the default application language, install location, and other common "
              "installation settings.");
}

QString CHandler_InstallOption::GetTabIcon()
{
    return QStringLiteral(":/img/install-option.png");
}

QString CHandler_InstallOption::GetInfoName()
{
    return encodedHelpPage(QStringLiteral("Installation Options.html"));
}
