// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/PageHandler.h"

#include <QCoreApplication>

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

/// The Advertisement sub-page. Editor only.
class CHandler_Prefer_Advertisement : public PreferHandler<tab_prefer_advertisement>
{
    Q_DECLARE_TR_FUNCTIONS(CHandler_Prefer_Advertisement)

public:
    explicit CHandler_Prefer_Advertisement(bool editor);
};
