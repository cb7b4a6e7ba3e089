// SPDX-License-Identifier: Apache-2.0
#include "app/DlgCustomizationTool_v2.h"

#include "app/FlowMessages.h"
#include "core/Logging.h"
#include "core/OutputFile.h"
#include "package/signature/PackageSigning.h"
#include "profile/CProfileGenerator.h"
#include "profile/signing/dlg_sign_package.h"

namespace {

QStringList packageIdentities()
{
    const SigningIdentities listed = CProfileGenerator::FindSignIDs(QStringLiteral("basic"));
    return listed.names ? identitiesForPackages(*listed.names) : QStringList();
}

/// The signed package takes the unsigned one's place when its signature holds.
bool signInPlace(const QString &package, const QString &identity)
{
    PackageSigning signing;
    signing.identity = identity;
    OutputFile output(package, OutputFile::Existing::Replace);
    const Result<QStringList> made = signPackage(package, signing, &output);
    if (!made) {
        qCWarning(logApp).noquote() << made.problem().file + QStringLiteral(": ") + made.problem().text;
        return false;
    }
    for (const QString &remark : *made)
        qCWarning(logApp).noquote() << remark;
    return true;
}

} // namespace

void DlgCustomizationTool_v2::offerPackageSigning(const QString &package)
{
    const QStringList identities = packageIdentities();
    if (identities.isEmpty())
        return;
    dlg_sign_package dialog(identities, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const auto isSigned = std::make_shared<bool>(false);
    runInWorker(
        [package, identity = dialog.identity(), isSigned] { *isSigned = signInPlace(package, identity); },
        [this, isSigned] { showSigningResult(*isSigned); });
}

void DlgCustomizationTool_v2::showSigningResult(bool isSigned)
{
    FlowMessages::information(this, isSigned ? tr("File signed successfully!")
                                             : tr("Failed to sign the file, please try again."));
}
