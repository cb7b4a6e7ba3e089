// SPDX-License-Identifier: Apache-2.0
#include "profile/signing/KeptCopy.h"

#include "core/Logging.h"
#include "core/SafeFile.h"
#include "profile/KeptFile.h"

KeptCopy::KeptCopy(const QString &path)
    : m_path(path)
    , m_copy(m_folder.filePath(path.section(QLatin1Char('/'), -1)))
    , m_valid(m_folder.isValid() && SafeFile::copyNew(path, m_copy, SafeFile::Lasting::No))
{
}

bool KeptCopy::putBack()
{
    const Result<> put = KeptFile(m_copy).putAt(m_path);
    if (put)
        return true;
    m_folder.setAutoRemove(false);
    qCWarning(logProfile).noquote() << QStringLiteral("%1 cannot be put back (%2); its copy is %3")
                                           .arg(m_path, put.problem().text, m_copy);
    return false;
}
