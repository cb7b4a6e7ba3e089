// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/CTabWidget.h"

#include <memory>

namespace Ui {
class tab_installoption;
}

class tab_installoption : public CTabWidget
{
    Q_OBJECT

public:
    explicit tab_installoption(QWidget *parent = nullptr);
    ~tab_installoption() override;

private:
    const std::unique_ptr<Ui::tab_installoption> m_ui;
};
