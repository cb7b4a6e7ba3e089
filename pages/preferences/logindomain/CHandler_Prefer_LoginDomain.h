// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/preferences/logindomain/tab_prefer_login_domain.h"
#include "pages/preferences/PreferHandler.h"

#include <QCoreApplication>

/// The sub-page of the domains that users may sign in from. Editor only.
class CHandler_Prefer_LoginDomain : public PreferHandler<tab_prefer_login_domain>
{
    Q_DECLARE_TR_FUNCTIONS(CHandler_Prefer_LoginDomain)

public:
    using PreferHandler::PreferHandler;

    int GetTabId() override;
    QString GetTabTitle() const override;
    bool IsOnlyForEditor() override;
    /// For "tableView_domains" the listed domains, joined with ";".
    QVariant GetProperty(const QString &objectName) override;
    QString GetInfoAnchorId() override;

protected:
    void fillPage(tab_prefer_login_domain &page, const EditorXmlData &data) override;
};
