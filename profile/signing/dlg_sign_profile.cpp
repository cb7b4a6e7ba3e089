// SPDX-License-Identifier: Apache-2.0
#include "profile/signing/dlg_sign_profile.h"

#include "core/Logging.h"
#include "profile/CProfileGenerator.h"
#include "profile/signing/KeptCopy.h"

namespace {

bool signOrPutBack(const QString &path, const QString &identity)
{
    KeptCopy copy(path);
    if (!copy.isValid()) {
        qCWarning(logProfile).noquote()
            << QStringLiteral("%1 cannot be copied, so it is not signed").arg(path);
        return false;
    }
    if (CProfileGenerator::SignProfile(path, identity))
        return true;
    copy.putBack();
    return false;
}

} // namespace

dlg_sign_profile::dlg_sign_profile(const QString &profilePath, const QStringList &identities, QWidget *parent)
    : SigningDialog(identities, parent)
    , m_profilePath(profilePath)
{
}

bool dlg_sign_profile::IsSignedSuccess() const
{
    return m_signed;
}

void dlg_sign_profile::sign()
{
    if (identity().isEmpty())
        return;
    m_signed = signOrPutBack(m_profilePath, identity());
    accept();
}
