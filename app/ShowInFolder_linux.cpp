// SPDX-License-Identifier: Apache-2.0
#include "app/ShowInFolder.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

void showInFolder(const QString &file)
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(file).absolutePath()));
}

QString showInFolderText()
{
    return QCoreApplication::translate("MessagesView", "Show in File Manager");
}
