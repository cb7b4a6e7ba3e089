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

private:
    const std::unique_ptr<Ui::tab_prefer_AIP> m_ui;
};
