// SPDX-License-Identifier: Apache-2.0
#include "profile/KeptFile.h"

#include "core/SafeFile.h"

#include <QFile>
#include <QFileInfo>

KeptFile::KeptFile(const QString &path)
{
    QFile file(path);
    // Opening a named pipe would wait for its writer.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return;
    m_bytes = file.readAll();
    m_permissions = file.permissions();
    m_valid = file.error() == QFileDevice::NoError;
}

bool KeptFile::isAt(const QString &path) const
{
    const KeptFile other(path);
    return m_valid && other.m_valid && other.m_bytes == m_bytes;
}

Result<> KeptFile::putAt(const QString &path) const
{
    if (!m_valid)
        return Problem{path, QStringLiteral("what it held could not be read")};
    if (!isAt(path)) {
        if (SafeFile::kindOf(path) == SafeFile::Kind::Link)
            QFile::remove(path);
        if (Result<> written = SafeFile::replaceContents(path, m_bytes); !written)
            return written;
    }
    QFile file(path);
    if (file.permissions() == m_permissions || file.setPermissions(m_permissions))
        return {};
    return Problem{path, file.errorString()};
}
