// SPDX-License-Identifier: Apache-2.0
#include "welcome/tab_import_xml.h"

#include "ui_tab_import_xml.h"
#include "welcome/DroppedFiles.h"
#include "welcome/OpenFile.h"

#include <QDragEnterEvent>

namespace {

QString droppedDocument(const QDropEvent &event)
{
    return DroppedFiles::firstWithSuffix(event.mimeData(), QStringLiteral("xml"));
}

} // namespace

tab_import_xml::tab_import_xml(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::tab_import_xml>())
{
    m_ui->setupUi(this);
    connect(m_ui->btnImport, &QPushButton::clicked, this, &tab_import_xml::import);
}

tab_import_xml::~tab_import_xml() = default;

void tab_import_xml::dragEnterEvent(QDragEnterEvent *event)
{
    if (!droppedDocument(*event).isEmpty())
        event->acceptProposedAction();
}

void tab_import_xml::dropEvent(QDropEvent *event)
{
    const QString path = droppedDocument(*event);
    if (path.isEmpty())
        return;
    DroppedFiles::log(path);
    event->acceptProposedAction();
    emit sig_fileloaded(path);
}

void tab_import_xml::import()
{
    const QString path = chooseFileToOpen(this, tr("xml files (*.xml)"));
    if (!path.isEmpty())
        emit sig_fileloaded(path);
}
