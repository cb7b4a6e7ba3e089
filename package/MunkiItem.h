// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

/// What munki is told of a package, in its "pkginfo": a property list. Any thread.
struct MunkiItem
{
    /// What an installed component leaves on a Mac.
    struct Receipt
    {
        QString identifier;
        QString version;
        qint64 installedKibibytes = 0;
    };

    QString name;
    QString displayName;
    QString version;
    QString minimumSystem; ///< empty where the package names none
    QStringList catalogs;  ///< none stands for munki's "testing"
    QList<Receipt> receipts;
    QString location;  ///< of the package in the repository
    QByteArray sha256; ///< of the package, in hexadecimal
    qint64 bytes = 0;  ///< of the package

    /// Takes receipts and the oldest system from an expanded package.
    Result<> readExpanded(const QString &folder);

    /// The property list as XML.
    QByteArray propertyList() const;
};
