// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/preferences/PreferHandler.h"
#include "pages/preferences/startpage/tab_prefer_startpage.h"

#include <QCoreApplication>

/// The Start Page sub-page.
class CHandler_Prefer_StartPage : public PreferHandler<tab_prefer_startpage>
{
    Q_DECLARE_TR_FUNCTIONS(CHandler_Prefer_StartPage)

public:
    using PreferHandler::PreferHandler;

    int GetTabId() override;
    QString GetTabTitle() const override;
    bool IsOnlyForEditor() override;
    QString GetInfoAnchorId() override;
};
