// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/PageHandler.h"

#include <QCoreApplication>

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

/// The sub-page of the iManage sign-in. Editor only.
class CHandler_Prefer_IManage : public PreferHandler<tab_prefer_imanage>
{
    Q_DECLARE_TR_FUNCTIONS(CHandler_Prefer_IManage)

public:
    explicit CHandler_Prefer_IManage(bool editor);
};
