// SPDX-License-Identifier: Apache-2.0
#include "profile/signing/SigningDialog.h"

#include "ui_dlg_sign_profile.h"

#include <QAbstractItemView>
#include <QPushButton>

namespace {

const QLatin1String noIdentity("None");

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

SigningDialog::SigningDialog(const QStringList &identities, QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::dlg_sign_profile>())
{
    m_ui->setupUi(this);
    setWindowFlags(windowFlags() & ~(Qt::WindowMinMaxButtonsHint | Qt::WindowContextHelpButtonHint));
    QPushButton *signButton = m_ui->buttonBox->button(QDialogButtonBox::Ok);
    signButton->setText(tr("Sign"));
    m_ui->buttonBox->button(QDialogButtonBox::Cancel)->setText(tr("Don't Sign"));
    m_ui->comboBox->addItems(identities.isEmpty() ? QStringList(noIdentity) : identities);
    showNamesInFull(*m_ui->comboBox);
    signButton->setDisabled(identities.isEmpty());
    connect(m_ui->buttonBox, &QDialogButtonBox::accepted, this, &SigningDialog::sign);
    connect(m_ui->buttonBox, &QDialogButtonBox::rejected, this, &SigningDialog::reject);
}

SigningDialog::~SigningDialog() = default;

QString SigningDialog::identity() const
{
    const QString chosen = m_ui->comboBox->currentText();
    return chosen == noIdentity ? QString() : chosen;
}

void SigningDialog::setMeaning(const QString &text)
{
    m_ui->label_info->setText(
        QStringLiteral("<p style=\"line-height:16px;\"><span style=\"font-family:'SF Pro Text'; "
                       "font-size:13px; color:#131313;\">%1</span></p>")
            .arg(text));
}
