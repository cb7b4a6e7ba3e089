// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/PageHandler.h"

#include <QCoreApplication>

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

    /// Says in the list of attachment modes what it means that none of them is chosen.
    void explainNoMode(const EditorXmlData &record);

private:
    void makeTable();

    const std::unique_ptr<Ui::tab_prefer_security> m_ui;
};

/// The sub-page of what documents may do and open.
class CHandler_Prefer_Security : public PreferHandler<tab_prefer_security>
{
    Q_DECLARE_TR_FUNCTIONS(CHandler_Prefer_Security)

public:
    explicit CHandler_Prefer_Security(bool editor);

protected:
    void fillPage(tab_prefer_security &page, const EditorXmlData &data) override;
};
