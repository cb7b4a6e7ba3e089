// SPDX-License-Identifier: Apache-2.0
#include "cli/PrivateFolder.h"

#include <QDir>
#include <QFile>

namespace {

/// Qt takes the top folder of the file system when TMPDIR leads nowhere; we want to hear of it.
QString temporaryFolder()
{
    const QString configured = qEnvironmentVariable("TMPDIR");
    return configured.isEmpty() ? QDir::tempPath() : configured;
}

QString folderTemplate()
{
    return QDir(temporaryFolder()).absoluteFilePath(QStringLiteral("pct-XXXXXX"));
}

/// A package may hold folders that even their owner cannot change; those would stay behind.
void makeRemovable(const QString &folder)
{
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QFileInfoList subfolders =
        QDir(folder).entryInfoList(QDir::Dirs | QDir::Hidden | QDir::NoSymLinks | QDir::NoDotAndDotDot);
    for (const QFileInfo &subfolder : subfolders)
        makeRemovable(subfolder.filePath());
}

} // namespace

PrivateFolder::PrivateFolder()
    : m_folder(folderTemplate())
{
}

PrivateFolder::~PrivateFolder()
{
    if (m_folder.isValid())
        makeRemovable(m_folder.path());
}

Verdict PrivateFolder::problem() const
{
    if (m_folder.isValid())
        return std::nullopt;
    return Problem{temporaryFolder(), QStringLiteral("no private folder can be made there (%1); "
                                                     "set TMPDIR to a folder that can be written")
                                          .arg(m_folder.errorString())};
}

QString PrivateFolder::makeSubfolder(const QString &name) const
{
    return QDir(m_folder.path()).mkdir(name) ? m_folder.filePath(name) : QString();
}
