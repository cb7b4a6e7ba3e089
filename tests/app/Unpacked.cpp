// SPDX-License-Identifier: Apache-2.0
#include "tests/app/Unpacked.h"

#include "tests/support/Archive.h"

#include <QDir>
#include <QDirIterator>

Unpacked::Unpacked(const QString &package, bool editor)
    : m_component(m_folder.filePath(editor ? QStringLiteral("package/Pelix_PDF_Editor.pkg/")
                                           : QStringLiteral("package/Pelix_PDF_Reader.pkg/")))
{
    Archive::unpack(package, m_folder.filePath(QStringLiteral("package")));
    Archive::unpack(member("Scripts"), m_folder.filePath(QStringLiteral("scripts")));
}

QString Unpacked::member(const char *name) const
{
    return m_component + QLatin1String(name);
}

QString Unpacked::script(const char *name) const
{
    return m_folder.filePath(QStringLiteral("scripts/")) + QLatin1String(name);
}

QStringList Unpacked::scripts() const
{
    return QDir(m_folder.filePath(QStringLiteral("scripts")))
        .entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
}

QStringList Unpacked::files() const
{
    const QDir root(m_folder.path());
    QStringList files;
    QDirIterator all(root.path(), QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (all.hasNext())
        files << root.relativeFilePath(all.next());
    files.removeOne(root.relativeFilePath(member("Scripts")));
    files.sort();
    return files;
}

QString Unpacked::file(const QString &name) const
{
    return m_folder.filePath(name);
}
