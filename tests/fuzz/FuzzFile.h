// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdlib>

/// A file for readers that take a path. In memory where that is possible, because thousands of small files
/// keep a disk busy.
class FuzzFile
{
public:
    FuzzFile()
        : m_folder((QFileInfo(inMemory()).isWritable() ? inMemory() : QDir::tempPath()) +
                   QStringLiteral("/pct-fuzz-XXXXXX"))
    {
    }

    QString path() const { return m_folder.filePath(QStringLiteral("input")); }

    void write(const QByteArray &bytes) const
    {
        QFile file(path());
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            std::abort();
    }

    QByteArray read() const
    {
        QFile file(path());
        if (!file.open(QIODevice::ReadOnly))
            std::abort();
        return file.readAll();
    }

private:
    static QString inMemory() { return QStringLiteral("/dev/shm"); }

    QTemporaryDir m_folder;
};

/// Log lines of a reader would drown what a fuzzer says.
inline void muteLog()
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
}
