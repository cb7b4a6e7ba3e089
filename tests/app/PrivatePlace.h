// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/TestFiles.h"

#include <QTemporaryDir>

/// A place of a test's own for files, temporary files and user defaults, so that tests can run beside each
/// other and never touch the defaults of whoever runs them. Made before anything asks for either.
class PrivatePlace
{
public:
    PrivatePlace()
        : m_temporaryFolder(qgetenv("TMPDIR"))
    {
        TestFiles::write(path("GNUstep.conf"),
                         "GNUSTEP_USER_DEFAULTS_DIR=" + QFile::encodeName(m_folder.path()) + '\n');
        qputenv("GNUSTEP_CONFIG_FILE", QFile::encodeName(path("GNUstep.conf")));
        QDir().mkpath(path("tmp"));
        qputenv("TMPDIR", QFile::encodeName(path("tmp")));
    }

    /// The next place must not be looked for in a folder that is gone: Qt takes the root folder then.
    ~PrivatePlace()
    {
        if (m_temporaryFolder.isEmpty())
            qunsetenv("TMPDIR");
        else
            qputenv("TMPDIR", m_temporaryFolder);
    }

    PrivatePlace(const PrivatePlace &) = delete;
    PrivatePlace &operator=(const PrivatePlace &) = delete;

    QString path(const char *name) const { return m_folder.filePath(QLatin1String(name)); }

private:
    QByteArray m_temporaryFolder;
    QTemporaryDir m_folder;
};
