// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/CTabWidget.h"

#include <memory>

namespace Ui {
class tab_prefer_imanage;
}

/// How iManage 10 signs in.
class tab_prefer_imanage : public CTabWidget
{
    Q_OBJECT

public:
    explicit tab_prefer_imanage(QWidget *parent = nullptr);
    ~tab_prefer_imanage() override;

private:
    const std::unique_ptr<Ui::tab_prefer_imanage> m_ui;
};
