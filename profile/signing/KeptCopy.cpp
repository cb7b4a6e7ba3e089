// SPDX-License-Identifier: Apache-2.0
#include "profile/signing/KeptCopy.h"

#include "core/SafeFile.h"
#include "profile/Logging.h"

#include <QFile>

namespace {

/// A signing command may have removed the file or left something else in its place.
bool replaceBy(const QString &copy, const QString &path, QString *error)
{
    QFile source(copy);
    if (!source.open(QIODevice::ReadOnly)) {
        *error = source.errorString();
        return false;
    }
    if (SafeFile::kindOf(path) == SafeFile::Kind::Link)
        QFile::remove(path);
    return SafeFile::replaceContents(path, source.readAll(), error) &&
           QFile::setPermissions(path, source.permissions());
}

} // namespace

KeptCopy::KeptCopy(const QString &path)
    : m_path(path)
    , m_copy(m_folder.filePath(path.section(QLatin1Char('/'), -1)))
    , m_valid(m_folder.isValid() && SafeFile::copyNew(path, m_copy))
{
}

bool KeptCopy::putBack()
{
    QString error;
    if (replaceBy(m_copy, m_path, &error))
        return true;
    m_folder.setAutoRemove(false);
    qCWarning(logProfile).noquote()
        << QStringLiteral("%1 cannot be put back (%2); its copy is %3").arg(m_path, error, m_copy);
    return false;
}
