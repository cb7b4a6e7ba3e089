// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/ICutsomizationHandler.h"
#include "pages/installoption/tab_installoption.h"
#include "pages/PageHandler.h"

#include <QCoreApplication>

/// The Installation Options page: what the installer does on the target machine. Packages only.
class CHandler_InstallOption : public PageHandler<ICutsomizationHandler, tab_installoption>
{
    Q_DECLARE_TR_FUNCTIONS(CHandler_InstallOption)

public:
    using PageHandler::PageHandler;

    int GetTabId() override;
    QString GetTabName() override;
    QString GetTabTitle() const override;
    QString GetTabTooltip() const override;
    QString GetTabIcon() override;
    QString GetInfoName() override;
};
