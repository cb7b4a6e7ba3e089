// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/preferences/PreferHandler.h"
#include "pages/preferences/security/tab_prefer_security.h"

#include <QCoreApplication>

/// The sub-page of what documents may do and open.
class CHandler_Prefer_Security : public PreferHandler<tab_prefer_security>
{
    Q_DECLARE_TR_FUNCTIONS(CHandler_Prefer_Security)

public:
    using PreferHandler::PreferHandler;

    int GetTabId() override;
    QString GetTabTitle() const override;
    bool IsOnlyForEditor() override;
    QString GetInfoAnchorId() override;
};
