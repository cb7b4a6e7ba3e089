// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMessageBox>

/// Asks under which identifier a profile is written when another one is installed. exec() returns
/// QMessageBox::Yes for a new identifier, QMessageBox::No for the installed one, and anything else when the
/// box was closed without an answer.
class IdentifierQuestion : public QMessageBox
{
    Q_OBJECT

public:
    explicit IdentifierQuestion(QWidget *parent);

protected:
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
};
