// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/TestFiles.h"

#include <QTemporaryDir>

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

/// Standard error, where Foundation logs, goes to a file while the object lives.
class StderrLines
{
public:
    StderrLines()
    {
        std::fflush(stderr);
        m_before = ::dup(STDERR_FILENO);
        const int file = ::open(QFile::encodeName(path()).constData(), O_WRONLY | O_CREAT | O_APPEND, 0600);
        ::dup2(file, STDERR_FILENO);
        ::close(file);
    }

    ~StderrLines()
    {
        std::fflush(stderr);
        ::dup2(m_before, STDERR_FILENO);
        ::close(m_before);
    }

    StderrLines(const StderrLines &) = delete;
    StderrLines &operator=(const StderrLines &) = delete;

    QByteArray all() const { return TestFiles::read(path()); }
    bool has(const char *text) const { return all().contains(text); }

private:
    QString path() const { return m_folder.filePath(QStringLiteral("stderr")); }

    QTemporaryDir m_folder;
    int m_before = -1;
};
