// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/UnreadSettings.h"
#include "package/PackageInspection.h"

#include <QList>
#include <QString>
#include <QStringList>

struct Product;

/// A warning and the file that it is about.
struct FileWarning
{
    QString file;
    BuildWarning warning;
};

/// For a document, or the one in a package, with settings that nobody reads; one warning for each of the
/// first few.
QList<FileWarning> unreadWarnings(const QString &file, const QVector<UnreadSetting> &settings);

/// For a document whose ribbon element, called `name`, a profile cannot carry as it is.
FileWarning ribbonWarning(const QString &document, const QString &name);

/// For a document that was made for one product and is used for the other.
FileWarning otherProductWarning(const QString &document, const Product &made, const Product &wanted);

/// For what `security`, or another command, said about identities that it could not use, or that others can.
QList<FileWarning> identityWarnings(const QStringList &remarks,
                                    const QString &command = QStringLiteral("security"));
