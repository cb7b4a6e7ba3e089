// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/PageHandler.h"

#include <QCoreApplication>

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

/// The Start Page sub-page.
class CHandler_Prefer_StartPage : public PreferHandler<tab_prefer_startpage>
{
    Q_DECLARE_TR_FUNCTIONS(CHandler_Prefer_StartPage)

public:
    explicit CHandler_Prefer_StartPage(bool editor);
};
