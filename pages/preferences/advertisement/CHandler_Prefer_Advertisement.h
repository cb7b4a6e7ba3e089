// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/preferences/advertisement/tab_prefer_advertisement.h"
#include "pages/preferences/PreferHandler.h"

#include <QCoreApplication>

/// The Advertisement sub-page. Editor only.
class CHandler_Prefer_Advertisement : public PreferHandler<tab_prefer_advertisement>
{
    Q_DECLARE_TR_FUNCTIONS(CHandler_Prefer_Advertisement)

public:
    using PreferHandler::PreferHandler;

    int GetTabId() override;
    QString GetTabTitle() const override;
    bool IsOnlyForEditor() override;
    QString GetInfoAnchorId() override;
};
