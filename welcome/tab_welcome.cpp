// SPDX-License-Identifier: Apache-2.0
#include "welcome/tab_welcome.h"

#include "ui_tab_welcome.h"
#include "welcome/DroppedFiles.h"
#include "welcome/OpenFile.h"

#include <QDragEnterEvent>
#include <QMimeData>

tab_welcome::tab_welcome(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::tab_welcome>())
{
    m_ui->setupUi(this);
    connect(m_ui->btnBrowse, &QPushButton::clicked, this, &tab_welcome::browse);
}

tab_welcome::~tab_welcome() = default;

void tab_welcome::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void tab_welcome::dropEvent(QDropEvent *event)
{
    const QStringList paths = DroppedFiles::paths(event->mimeData());
    if (paths.isEmpty())
        return;
    for (const QString &path : paths)
        DroppedFiles::log(path);
    event->acceptProposedAction();
    emit sig_fileloaded(paths.last());
}

void tab_welcome::browse()
{
    const QString path = chooseFileToOpen(this, tr("Package files (*.pkg)"));
    if (!path.isEmpty())
        emit sig_fileloaded(path);
}
