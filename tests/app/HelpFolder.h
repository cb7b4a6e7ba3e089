// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/TestFiles.h"
#include "welcome/HelpAddress.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

/// A folder of help pages, and the names under which a window finds them there instead of in its own folder.
class HelpFolder
{
public:
    void add(const QString &file, const QByteArray &body) const
    {
        TestFiles::write(m_folder.filePath(file),
                         "<!DOCTYPE html><meta charset=\"utf-8\"><body>" + body + "</body>");
    }

    /// For GetInfoName().
    QString name(const char *encodedFile) const
    {
        const QString own = helpAddress(QCoreApplication::applicationDirPath(), QString()).toLocalFile();
        return QDir(QDir::cleanPath(own)).relativeFilePath(m_folder.path()) + QLatin1Char('/') +
               QLatin1String(encodedFile);
    }

    QString address(const char *encodedFile) const
    {
        return QUrl::fromLocalFile(m_folder.path()).toString() + QLatin1Char('/') +
               QLatin1String(encodedFile);
    }

private:
    QTemporaryDir m_folder;
};
