// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class DlgAbout;
}

/// Says what the tool is and whose. Closed with the window's close control.
class DlgAbout : public QDialog
{
    Q_OBJECT

public:
    explicit DlgAbout(QDialog *parent = nullptr);
    ~DlgAbout() override;

private:
    std::unique_ptr<Ui::DlgAbout> m_ui;
};
