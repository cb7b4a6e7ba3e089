// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/PageHandler.h"

#include <QCoreApplication>

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

/// The sub-page of the applications area, which has no help of its own. Editor only.
class CHandler_Prefer_MyApps : public PreferHandler<tab_prefer_myapps>
{
    Q_DECLARE_TR_FUNCTIONS(CHandler_Prefer_MyApps)

public:
    explicit CHandler_Prefer_MyApps(bool editor);
};
