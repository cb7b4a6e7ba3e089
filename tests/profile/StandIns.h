// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/TestFiles.h"

#include <QTemporaryDir>

/// Scripts in place of the system's commands for as long as the object lives. Each writes the arguments it
/// got to a file, one a line.
class StandIns
{
public:
    StandIns() { qputenv("PCT_HOSTTOOLS", QFile::encodeName(m_folder.path())); }
    ~StandIns() { qputenv("PCT_HOSTTOOLS", m_before); }
    StandIns(const StandIns &) = delete;
    StandIns &operator=(const StandIns &) = delete;

    /// `script` runs after the arguments have been written.
    void set(const QString &command, const QByteArray &script)
    {
        TestFiles::writeScript(m_folder.filePath(command),
                               "printf '%s\\n' \"$@\" > \"$0.arguments\"\n" + script);
    }

    /// A command that prints the bytes and exits with 0.
    void setOutput(const QString &command, const QByteArray &output)
    {
        TestFiles::write(m_folder.filePath(command + QStringLiteral(".output")), output);
        set(command, "cat \"$0.output\"\n");
    }

    /// Arguments of the last call, each with a line end.
    QByteArray arguments(const QString &command) const
    {
        return TestFiles::read(m_folder.filePath(command + QStringLiteral(".arguments")));
    }

private:
    QTemporaryDir m_folder;
    QByteArray m_before = qgetenv("PCT_HOSTTOOLS");
};
