// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/preferences/mip/tab_prefer_AIP.h"
#include "pages/preferences/PreferHandler.h"

#include <QCoreApplication>

/// The sub-page of Microsoft Information Protection.
class CHandler_Prefer_AIP : public PreferHandler<tab_prefer_AIP>
{
    Q_DECLARE_TR_FUNCTIONS(CHandler_Prefer_AIP)

public:
    using PreferHandler::PreferHandler;

    int GetTabId() override;
    QString GetTabTitle() const override;
    bool IsOnlyForEditor() override;
    QString GetInfoAnchorId() override;
};
