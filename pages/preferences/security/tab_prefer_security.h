// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/CTabWidget.h"

#include <memory>

namespace Ui {
class tab_prefer_security;
}

/// What documents may do, and which attachments may be opened.
class tab_prefer_security : public CTabWidget
{
    Q_OBJECT

public:
    explicit tab_prefer_security(QWidget *parent = nullptr);
    ~tab_prefer_security() override;

private:
    const std::unique_ptr<Ui::tab_prefer_security> m_ui;
};
