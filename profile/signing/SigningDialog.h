// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <QStringList>

#include <memory>

namespace Ui {
class dlg_sign_profile;
}

/// What the dialogs that offer to sign have in common: a list of identities, and whether to sign with one.
class SigningDialog : public QDialog
{
    Q_OBJECT

public:
    ~SigningDialog() override;

    /// The chosen one; empty when there is none.
    QString identity() const;

protected:
    SigningDialog(const QStringList &identities, QWidget *parent);

    /// Says, in the place of what is said of profiles, what it means to sign.
    void setMeaning(const QString &text);

    /// What the user does who wants to sign; the dialog stays until it is accepted.
    virtual void sign() = 0;

private:
    std::unique_ptr<Ui::dlg_sign_profile> m_ui;
};
