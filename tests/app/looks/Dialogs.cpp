// SPDX-License-Identifier: Apache-2.0
#include "tests/app/looks/Dialogs.h"

#include "app/dlg_select_app_type.h"
#include "app/DlgAbout.h"
#include "app/DlgCustomizationTool_v2.h"
#include "app/IdentifierQuestion.h"
#include "app/MessagesView.h"
#include "app/SaveDialogWithOption.h"
#include "profile/signing/dlg_sign_package.h"
#include "profile/signing/dlg_sign_profile.h"

namespace {

const QStringList identities = {QStringLiteral("Example School District"), QStringLiteral("Acme IT")};

std::unique_ptr<QDialog> makeSigningDialog()
{
    return std::make_unique<dlg_sign_profile>(QString(), identities, nullptr);
}

std::unique_ptr<QDialog> makePackageSigningDialog()
{
    return std::make_unique<dlg_sign_package>(identities, nullptr);
}

std::unique_ptr<QDialog> makeSaveDialog(const QString &folder)
{
    auto dialog = std::make_unique<SaveDialogWithOption>(
        nullptr, folder + QStringLiteral("/Pelix PDF Editor_Untitled.pkg"),
        DlgCustomizationTool_v2::tr("Package files (*.pkg)"));
    dialog->setOptionText(DlgCustomizationTool_v2::tr("Save config file for future modification"));
    return dialog;
}

} // namespace

QList<DialogKind> everyDialog(const QString &folder)
{
    return {
        {QStringLiteral("chooser"), [] { return std::make_unique<dlg_select_app_type>(); }},
        {QStringLiteral("about"), [] { return std::make_unique<DlgAbout>(); }},
        {QStringLiteral("signing"), makeSigningDialog},
        {QStringLiteral("package-signing"), makePackageSigningDialog},
        {QStringLiteral("messages"), [] { return std::make_unique<MessagesView>(nullptr); }},
        {QStringLiteral("identifier-question"), [] { return std::make_unique<IdentifierQuestion>(nullptr); }},
        {QStringLiteral("save-dialog"), [folder] { return makeSaveDialog(folder); }}};
}

std::unique_ptr<QDialog> makeDialog(const QString &name, const QString &folder)
{
    for (const DialogKind &kind : everyDialog(folder)) {
        if (kind.name == name)
            return kind.make();
    }
    qFatal("no dialog is named %s", qPrintable(name));
}
