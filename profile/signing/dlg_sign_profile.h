// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "profile/signing/SigningDialog.h"

/// Asks with which identity a finished profile is signed, and signs it in place. A profile that cannot be
/// signed is put back as it was, byte for byte.
class dlg_sign_profile : public SigningDialog
{
    Q_OBJECT

public:
    dlg_sign_profile(const QString &profilePath, const QStringList &identities, QWidget *parent);

    /// Meaningful after the dialog was accepted.
    bool IsSignedSuccess() const;

protected:
    void sign() override;

private:
    QString m_profilePath;
    bool m_signed = false;
};
