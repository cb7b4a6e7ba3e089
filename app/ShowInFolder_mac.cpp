// SPDX-License-Identifier: Apache-2.0
#include "app/ShowInFolder.h"

#include "core/Command.h"

#include <QCoreApplication>

void showInFolder(const QString &file)
{
    Command::run(QStringLiteral("open"), {QStringLiteral("-R"), file});
}

QString showInFolderText()
{
    return QCoreApplication::translate("MessagesView", "Show in Finder");
}
