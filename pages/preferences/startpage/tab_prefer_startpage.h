// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/CTabWidget.h"

#include <memory>

namespace Ui {
class tab_prefer_startpage;
}

/// Whether there is a start page.
class tab_prefer_startpage : public CTabWidget
{
    Q_OBJECT

public:
    explicit tab_prefer_startpage(QWidget *parent = nullptr);
    ~tab_prefer_startpage() override;

private:
    const std::unique_ptr<Ui::tab_prefer_startpage> m_ui;
};
