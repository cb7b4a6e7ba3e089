// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/preferences/imanage/tab_prefer_imanage.h"
#include "pages/preferences/PreferHandler.h"

#include <QCoreApplication>

/// The sub-page of the iManage sign-in. Editor only.
class CHandler_Prefer_IManage : public PreferHandler<tab_prefer_imanage>
{
    Q_DECLARE_TR_FUNCTIONS(CHandler_Prefer_IManage)

public:
    using PreferHandler::PreferHandler;

    int GetTabId() override;
    QString GetTabTitle() const override;
    bool IsOnlyForEditor() override;
    QString GetInfoAnchorId() override;
};
