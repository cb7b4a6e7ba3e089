// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/preferences/myapps/tab_prefer_myapps.h"
#include "pages/preferences/PreferHandler.h"

#include <QCoreApplication>

/// The sub-page of the applications area, which has no help of its own. Editor only.
class CHandler_Prefer_MyApps : public PreferHandler<tab_prefer_myapps>
{
    Q_DECLARE_TR_FUNCTIONS(CHandler_Prefer_MyApps)

public:
    using PreferHandler::PreferHandler;

    int GetTabId() override;
    QString GetTabTitle() const override;
    bool IsOnlyForEditor() override;
    QString GetInfoAnchorId() override;
};
