// SPDX-License-Identifier: Apache-2.0
#include "welcome/OpenFile.h"

#include "profile/CProfileGenerator.h"

#include <QFileDialog>

QString chooseFileToOpen(QWidget *parent, const QString &filter)
{
    const QString path =
        QFileDialog::getOpenFileName(parent, QString(), CProfileGenerator::GetLastOpenDirectory(), filter);
    if (!path.isEmpty())
        CProfileGenerator::SyncLastOpenDirectory(path);
    return path;
}
