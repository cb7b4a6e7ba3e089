// SPDX-License-Identifier: Apache-2.0
#include "pages/installoption/tab_installoption.h"

#include "ui_tab_installoption.h"

tab_installoption::tab_installoption(QWidget *parent)
    : CTabWidget(parent)
    , m_ui(std::make_unique<Ui::tab_installoption>())
{
    m_ui->setupUi(this);
}

tab_installoption::~tab_installoption() = default;

CHandler_InstallOption::CHandler_InstallOption(bool editor)
    : MainPageHandler(
          Product::of(editor),
          {1, tr("Installation Options"), QStringLiteral("Installation Options.html"),
           PageFacts::Products::Both, QStringLiteral("Installation Options"),
           tr("Allow you to change the default application language, install location, and other common "
              "installation settings."),
           QStringLiteral(":/img/install-option.png"), PageFacts::Outputs::Packages})
{
}
