// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "profile/signing/SigningDialog.h"

/// Asks with which identity a finished package is to be signed. Signing it takes long, and is left to whoever
/// asks.
class dlg_sign_package : public SigningDialog
{
    Q_OBJECT

public:
    dlg_sign_package(const QStringList &identities, QWidget *parent);

protected:
    void sign() override { accept(); }
};
