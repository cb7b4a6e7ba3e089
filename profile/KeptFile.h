// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

#include <QByteArray>
#include <QFileDevice>
#include <QString>

/// A regular file's bytes and permissions as they were when the object was made. Signing needs them twice: to
/// know that what was signed is the profile, and to put the profile back when the system's command, which
/// empties its output before it reads its input, has lost it.
class KeptFile
{
public:
    explicit KeptFile(const QString &path);

    /// Whether the file could be read.
    bool isValid() const { return m_valid; }
    const QByteArray &bytes() const { return m_bytes; }

    /// Whether a file with these bytes lies at the path.
    bool isAt(const QString &path) const;

    /// Gives a path the bytes and permissions, whatever lies there now; a link is replaced, not followed.
    /// A file that could not be read is put nowhere.
    Result<> putAt(const QString &path) const;

private:
    QByteArray m_bytes;
    QFileDevice::Permissions m_permissions;
    bool m_valid = false;
};
