// SPDX-License-Identifier: Apache-2.0
#include "app/DlgCustomizationTool_v2.h"

#include "app/FlowMessages.h"
#include "app/IdentifierQuestion.h"
#include "app/OpenedFile.h"
#include "config/CCommon.h"
#include "config/EditorXmlData.h"
#include "config/Product.h"
#include "core/Logging.h"
#include "profile/CProfileGenerator.h"
#include "profile/signing/dlg_sign_profile.h"

#include <QFileDialog>

void DlgCustomizationTool_v2::On_SaveProfile()
{
    const QString path = askProfilePath();
    if (path.isEmpty())
        return;
    CProfileGenerator::SyncLastOpenDirectory(path);
    if (!settleIdentifier() || !writeProfile(path)) {
        FlowMessages::warning(this, tr("Failed to create configure profile. Please try again."));
        return;
    }
    tellSaved(path);
    showOpenFile(path);
    offerSigning(path);
}

QString DlgCustomizationTool_v2::askProfilePath()
{
    const QString name = QLatin1Char('/') + m_product.title + QStringLiteral(".mobileconfig");
    const QString folder = CProfileGenerator::GetLastOpenDirectory();
    QFileDialog dialog(this, QString(), folder, tr("profile (*.mobileconfig)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("mobileconfig"));
    dialog.selectFile(folder + name);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

bool DlgCustomizationTool_v2::settleIdentifier()
{
    ProfilePayloadInfo &own = m_pEditorXmlData->payloadInfo;
    QString installedUuid;
    const QString installed =
        CProfileGenerator::GetSysProfileIdentifier(&installedUuid, m_product.isEditor());
    if (installed.isEmpty() || installed == own.PayloadIdentifier)
        return true;

    const int answer = IdentifierQuestion(this).exec();
    if (answer == QMessageBox::No) {
        own.PayloadIdentifier = installed;
        own.PayloadUUID = installedUuid;
        qCDebug(logApp).noquote() << QStringLiteral(
                                         "[debug] ==== follow system ProfileIdentifier:%1, ProfileUUID:%2.")
                                         .arg(own.PayloadIdentifier, own.PayloadUUID);
    } else if (answer == QMessageBox::Yes) {
        own.PayloadIdentifier = CProfileGenerator::GenPayloadIdentifier(&own.PayloadUUID);
        qCDebug(logApp).noquote() << QStringLiteral(
                                         "[debug] ==== generate ProfileIdentifier:%1, ProfileUUID:%2.")
                                         .arg(own.PayloadIdentifier, own.PayloadUUID);
    }
    return answer == QMessageBox::No || answer == QMessageBox::Yes;
}

bool DlgCustomizationTool_v2::writeProfile(const QString &path)
{
    ReloadEditorXmlData();
    return CProfileGenerator::CreateProfile(m_pEditorXmlData, path, m_product.isEditor());
}

void DlgCustomizationTool_v2::offerSigning(const QString &path)
{
    const QStringList identities = CProfileGenerator::GetSignIDs();
    if (identities.isEmpty()) {
        FlowMessages::information(this, tr("The configure profile has been created successfully."));
        return;
    }
    dlg_sign_profile dialog(path, identities, this);
    // Who does not sign knows where the profile is, and is told no more.
    if (dialog.exec() != QDialog::Accepted)
        return;
    showSigningResult(dialog.IsSignedSuccess());
}

void DlgCustomizationTool_v2::on_profileload(const QString &path)
{
    const Product &product = Product::of(CCommon::GetPCWAppType());
    if (!path.isEmpty()) {
        if (!CProfileGenerator::ImportProfile(path, m_pEditorXmlData, product.isEditor()))
            return logWhyProfileIsRefused(path, product);
    } else if (!CProfileGenerator::ImportProfile(m_pEditorXmlData, product.isEditor())) {
        FlowMessages::warning(this,
                              tr("No configuration profiles found, please try another option to continue."));
        return;
    }
    InitTabWidgets();
    UpdateTabWidgets();
    markSaved();
    showOpenFile(path);
    showFirstPage();
    On_ReloadInformation();
    EnableButtons(true);
}
