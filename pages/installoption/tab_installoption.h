// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/PageHandler.h"

#include <QCoreApplication>

#include <memory>

namespace Ui {
class tab_installoption;
}

/// What the installer does on the target machine.
class tab_installoption : public CTabWidget
{
    Q_OBJECT

public:
    explicit tab_installoption(QWidget *parent = nullptr);
    ~tab_installoption() override;

private:
    const std::unique_ptr<Ui::tab_installoption> m_ui;
};

/// The Installation Options page. Packages only.
class CHandler_InstallOption : public MainPageHandler<tab_installoption>
{
    Q_DECLARE_TR_FUNCTIONS(CHandler_InstallOption)

public:
    explicit CHandler_InstallOption(bool editor);
};
