// SPDX-License-Identifier: Apache-2.0
#include "profile/signing/KeptCopy.h"

#include "core/SafeFile.h"
#include "profile/KeptFile.h"
#include "profile/Logging.h"

KeptCopy::KeptCopy(const QString &path)
    : m_path(path)
    , m_copy(m_folder.filePath(path.section(QLatin1Char('/'), -1)))
    , m_valid(m_folder.isValid() && SafeFile::copyNew(path, m_copy, nullptr, SafeFile::Lasting::No))
{
}

bool KeptCopy::putBack()
{
    QString error;
    if (KeptFile(m_copy).putAt(m_path, &error))
        return true;
    m_folder.setAutoRemove(false);
    qCWarning(logProfile).noquote()
        << QStringLiteral("%1 cannot be put back (%2); its copy is %3").arg(m_path, error, m_copy);
    return false;
}
