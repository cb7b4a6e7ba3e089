// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/PageHandler.h"

#include <QCoreApplication>

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

/// The sub-page of Microsoft Information Protection.
class CHandler_Prefer_AIP : public PreferHandler<tab_prefer_AIP>
{
    Q_DECLARE_TR_FUNCTIONS(CHandler_Prefer_AIP)

public:
    explicit CHandler_Prefer_AIP(bool editor);
};
