// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/TestFiles.h"

#include <QDir>
#include <QTemporaryDir>

#include <sys/stat.h>

/// A folder with what a path can lead to: "file", which holds "old", "link" to it, "dangling", a link to
/// nothing, "folder" and "pipe".
class OddFiles
{
public:
    OddFiles()
    {
        TestFiles::write(at("file"), "old");
        m_isComplete = QFile::link(at("file"), at("link")) && QFile::link(at("nowhere"), at("dangling")) &&
                       QDir().mkdir(at("folder")) &&
                       ::mkfifo(QFile::encodeName(at("pipe")).constData(), 0600) == 0;
    }

    bool isComplete() const { return m_isComplete; }
    QString path() const { return m_folder.path(); }
    QString filePath(const QString &name) const { return m_folder.filePath(name); }
    QString at(const char *name) const { return filePath(QString::fromLatin1(name)); }

private:
    QTemporaryDir m_folder;
    bool m_isComplete = false;
};
