// SPDX-License-Identifier: Apache-2.0
#include "profile/signing/dlg_sign_package.h"

dlg_sign_package::dlg_sign_package(const QStringList &identities, QWidget *parent)
    : SigningDialog(identities, parent)
{
    setWindowTitle(tr("Signing Package"));
    setMeaning(
        tr("Signing a package verifies who made it and reveals later modifications. Device managements "
           "may refuse a package that is not signed."));
}
