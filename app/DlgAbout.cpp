// SPDX-License-Identifier: Apache-2.0
#include "app/DlgAbout.h"

#include "core/Version.h"
#include "pages/SharpPicture.h"
#include "ui_DlgAbout.h"

DlgAbout::DlgAbout(QDialog *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::DlgAbout>())
{
    m_ui->setupUi(this);
    m_ui->label_version->setText(tr("Version %1").arg(QLatin1String(toolVersion)));
    showSharpPicture(m_ui->label_background, QStringLiteral(":/img/about-background.png"));
    showSharpPicture(m_ui->label_logo, QStringLiteral(":/img/pct_purple.png"));
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                   Qt::WindowCloseButtonHint);
}

DlgAbout::~DlgAbout() = default;
