// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/CTabWidget.h"

#include <memory>

namespace Ui {
class tab_prefer_myapps;
}

/// Whether the start screen has its applications area.
class tab_prefer_myapps : public CTabWidget
{
    Q_OBJECT

public:
    explicit tab_prefer_myapps(QWidget *parent = nullptr);
    ~tab_prefer_myapps() override;

private:
    const std::unique_ptr<Ui::tab_prefer_myapps> m_ui;
};
