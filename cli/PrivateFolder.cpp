// SPDX-License-Identifier: Apache-2.0
#include "cli/PrivateFolder.h"

#include <QDir>

Verdict PrivateFolder::problem() const
{
    if (m_folder.isValid())
        return std::nullopt;
    return Problem{TransientFolder::temporaryPath(),
                   QStringLiteral("no private folder can be made there (%1); "
                                  "set TMPDIR to a folder that can be written")
                       .arg(m_folder.errorString())};
}

QString PrivateFolder::makeSubfolder(const QString &name) const
{
    return QDir(m_folder.path()).mkdir(name) ? m_folder.filePath(name) : QString();
}
