// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QString>

/// Something that install scripts do, or leave undone, on the machine of a user.
struct InstallAction
{
    QString name; ///< stable, for programs: "document", "defaultViewer", "signIn", "consoleUser"
    bool happens = false;
    QString text; ///< for people
};

/// What the scripts of a customized package will do, from the texts of its scripts alone. A folder without a
/// slash at the end. Any thread.
QList<InstallAction> installActions(const QString &scripts);
