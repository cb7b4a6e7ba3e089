// SPDX-License-Identifier: Apache-2.0
#include "welcome/FileDropPage.h"

#include "welcome/DroppedFiles.h"
#include "welcome/OpenFile.h"

#include <QDragEnterEvent>

FileDropPage::FileDropPage(const QString &suffix, QWidget *parent)
    : QWidget(parent)
    , m_suffix(suffix)
{
}

void FileDropPage::askForFile(const QString &filter)
{
    const QString path = chooseFileToOpen(this, filter);
    if (!path.isEmpty())
        takeFile(path);
}

void FileDropPage::dragEnterEvent(QDragEnterEvent *event)
{
    if (!DroppedFiles::firstWithSuffix(event->mimeData(), m_suffix).isEmpty())
        event->acceptProposedAction();
}

void FileDropPage::dropEvent(QDropEvent *event)
{
    const QString path = DroppedFiles::firstWithSuffix(event->mimeData(), m_suffix);
    if (path.isEmpty())
        return;
    DroppedFiles::log(path);
    event->acceptProposedAction();
    takeFile(path);
}
