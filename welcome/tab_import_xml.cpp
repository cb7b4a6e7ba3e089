// SPDX-License-Identifier: Apache-2.0
#include "welcome/tab_import_xml.h"

#include "ui_tab_import_xml.h"

tab_import_xml::tab_import_xml(QWidget *parent)
    : FileDropPage(QStringLiteral("xml"), parent)
    , m_ui(std::make_unique<Ui::tab_import_xml>())
{
    m_ui->setupUi(this);
    connect(m_ui->btnImport, &QPushButton::clicked, this, [this] { askForFile(tr("xml files (*.xml)")); });
}

tab_import_xml::~tab_import_xml() = default;

void tab_import_xml::takeFile(const QString &path)
{
    emit sig_fileloaded(path);
}
