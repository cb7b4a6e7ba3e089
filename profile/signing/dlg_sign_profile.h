// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <QStringList>

#include <memory>

namespace Ui {
class dlg_sign_profile;
}

/// Asks with which identity a finished profile is signed, and signs it in place. A profile that cannot be
/// signed is put back as it was, byte for byte.
class dlg_sign_profile : public QDialog
{
    Q_OBJECT

public:
    dlg_sign_profile(const QString &profilePath, const QStringList &identities, QWidget *parent);
    ~dlg_sign_profile() override;

    /// Meaningful after the dialog was accepted.
    bool IsSignedSuccess() const;

private:
    void sign();

    std::unique_ptr<Ui::dlg_sign_profile> m_ui;
    QString m_profilePath;
    bool m_signed = false;
};
