// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class dlg_select_app_type;
}

/// Asks at start which product is configured and what is produced. The answer is in the two members once
/// exec() has returned Accepted.
class dlg_select_app_type : public QDialog
{
    Q_OBJECT

public:
    explicit dlg_select_app_type(QWidget *parent = nullptr);
    ~dlg_select_app_type() override;

    bool m_bEditor = true;   ///< the Editor, otherwise the Reader
    bool m_bProfile = false; ///< a configuration profile, otherwise an installer package

private:
    void takeChoice();

    std::unique_ptr<Ui::dlg_select_app_type> m_ui;
};
