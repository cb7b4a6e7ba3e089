// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/CTabWidget.h"

#include <memory>

namespace Ui {
class tab_prefer_advertisement;
}

/// Whether advertisements are removed.
class tab_prefer_advertisement : public CTabWidget
{
    Q_OBJECT

public:
    explicit tab_prefer_advertisement(QWidget *parent = nullptr);
    ~tab_prefer_advertisement() override;

private:
    const std::unique_ptr<Ui::tab_prefer_advertisement> m_ui;
};
