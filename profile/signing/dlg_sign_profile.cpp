// SPDX-License-Identifier: Apache-2.0
#include "profile/signing/dlg_sign_profile.h"

#include "core/Logging.h"
#include "profile/CProfileGenerator.h"
#include "profile/signing/KeptCopy.h"
#include "ui_dlg_sign_profile.h"

#include <QAbstractItemView>
#include <QPushButton>

namespace {

const QLatin1String noIdentity("None");

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

/// Rich text, because plain text is not wrapped.
QString toolTipOf(const QString &identity)
{
    return QStringLiteral("<p style=\"white-space:pre-wrap\">%1</p>").arg(identity.toHtmlEscaped());
}

/// The list that opens is as wide as its names; the box itself keeps the size that the dialog gives it.
void showNamesInFull(QComboBox &box)
{
    box.view()->setTextElideMode(Qt::ElideNone);
    const auto showToolTip = [&box](const QString &identity) { box.setToolTip(toolTipOf(identity)); };
    QObject::connect(&box, &QComboBox::currentTextChanged, &box, showToolTip);
    showToolTip(box.currentText());
}

} // namespace

dlg_sign_profile::dlg_sign_profile(const QString &profilePath, const QStringList &identities, QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::dlg_sign_profile>())
    , m_profilePath(profilePath)
{
    m_ui->setupUi(this);
    setWindowFlags(windowFlags() & ~(Qt::WindowMinMaxButtonsHint | Qt::WindowContextHelpButtonHint));
    QPushButton *signButton = m_ui->buttonBox->button(QDialogButtonBox::Ok);
    signButton->setText(tr("Sign"));
    m_ui->buttonBox->button(QDialogButtonBox::Cancel)->setText(tr("Don't Sign"));
    m_ui->comboBox->addItems(identities.isEmpty() ? QStringList(noIdentity) : identities);
    showNamesInFull(*m_ui->comboBox);
    signButton->setDisabled(identities.isEmpty());
    connect(m_ui->buttonBox, &QDialogButtonBox::accepted, this, &dlg_sign_profile::sign);
    connect(m_ui->buttonBox, &QDialogButtonBox::rejected, this, &dlg_sign_profile::reject);
}

dlg_sign_profile::~dlg_sign_profile() = default;

bool dlg_sign_profile::IsSignedSuccess() const
{
    return m_signed;
}

void dlg_sign_profile::sign()
{
    const QString identity = m_ui->comboBox->currentText();
    if (identity.isEmpty() || identity == noIdentity)
        return;
    m_signed = signOrPutBack(m_profilePath, identity);
    accept();
}
