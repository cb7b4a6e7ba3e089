// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/CTabWidget.h"

#include <memory>

namespace Ui {
class tab_prefer_AIP;
}

/// Labels and sign-in of Microsoft Information Protection.
class tab_prefer_AIP : public CTabWidget
{
    Q_OBJECT

public:
    explicit tab_prefer_AIP(QWidget *parent = nullptr);
    ~tab_prefer_AIP() override;

    /// Chooses the policy on saving documents: 0 as the product has it, 1 off, 2 on.
    void setPolicy(int index);

    /// Chooses the sign-in library: 0 MSAL, 1 ADAL.
    void setAuthLibrary(int index);

    /// Sets whether single sign-on goes through the external browser.
    void setExternalBrowserUsed(bool on);

private:
    const std::unique_ptr<Ui::tab_prefer_AIP> m_ui;
};
