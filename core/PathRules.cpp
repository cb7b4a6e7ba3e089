// SPDX-License-Identifier: Apache-2.0
#include "core/PathRules.h"

#include "core/SafeFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <cerrno>
#include <unistd.h>

namespace {

QString folderOf(const QString &path)
{
    return QFileInfo(path).path();
}

bool isMissing(const QString &path)
{
    return SafeFile::kindOf(path) == SafeFile::Kind::Missing;
}

QString nameOnAMac(const QString &path)
{
    return QFileInfo(path).fileName().normalized(QString::NormalizationForm_D).toCaseFolded();
}

bool sameFolder(const QString &first, const QString &second)
{
    return SafeFile::sameFile(first, second) || QDir::cleanPath(first) == QDir::cleanPath(second);
}

/// Not by the letters of the path: a folder has many names.
bool isBelow(const QString &folder, const QString &path)
{
    for (QString above = QFileInfo(path).absolutePath(); !SafeFile::sameFile(folder, above);
         above = folderOf(above)) {
        if (QFileInfo(above).isRoot())
            return false;
    }
    return true;
}

bool isFileName(const QString &name)
{
    return !name.isEmpty() && name != QLatin1String(".") && name != QLatin1String("..");
}

Problem isFolder(const QString &path)
{
    return {path, QStringLiteral("is a folder; give the name of a file in it")};
}

Result<> writableFolder(const QString &path)
{
    const QByteArray folder = QFile::encodeName(folderOf(path) + QLatin1Char('/'));
    if (::access(folder.constData(), W_OK | X_OK) == 0)
        return {};
    if (errno == ENOENT || errno == ENOTDIR)
        return Problem{path, QStringLiteral("its folder does not exist; make the folder first")};
    return Problem{path,
                   QStringLiteral("its folder cannot be written; change its permissions or use another one")};
}

} // namespace

bool PathRules::samePlace(const QString &first, const QString &second)
{
    if (SafeFile::sameFile(first, second))
        return true;
    return isMissing(first) && isMissing(second) && nameOnAMac(first) == nameOnAMac(second) &&
           sameFolder(folderOf(first), folderOf(second));
}

bool PathRules::liesIn(const QString &folder, const QString &path)
{
    if (path.isEmpty())
        return false;
    const QString target = QFileInfo(path).canonicalFilePath();
    const QString canonicalFolder = QFileInfo(folderOf(path)).canonicalFilePath();
    const QString place = canonicalFolder.isEmpty() ? path : canonicalFolder + QStringLiteral("/file");
    return isBelow(folder, place) || (!target.isEmpty() && isBelow(folder, target));
}

Result<> PathRules::allDiffer(const QList<NamedPath> &files)
{
    for (int i = 0; i < files.size(); ++i) {
        for (int j = 0; j < i; ++j) {
            const bool given = !files.at(i).path.isEmpty() && !files.at(j).path.isEmpty();
            if (given && samePlace(files.at(i).path, files.at(j).path))
                return Problem{files.at(i).path, QStringLiteral("is both the %1 and the %2; give two files")
                                                     .arg(files.at(j).role, files.at(i).role)};
        }
    }
    return {};
}

Result<> PathRules::quotable(const QString &path)
{
    const QStringList words = QProcess::splitCommand(QStringLiteral("program \"%1\"").arg(path));
    if (words.size() == 2 && words.last() == path)
        return {};
    return Problem{path,
                   QStringLiteral("holds a double quote, which no command line of the package tools can "
                                  "carry; rename the file or its folder")};
}

Result<> PathRules::writable(const QString &path)
{
    if (!isFileName(QFileInfo(path).fileName()))
        return isFolder(path);
    switch (SafeFile::kindOf(path)) {
    case SafeFile::Kind::Missing:
    case SafeFile::Kind::File:
        return writableFolder(path);
    case SafeFile::Kind::Link:
        return Problem{path,
                       QStringLiteral("is a link, which is never written through; give the file's own path")};
    case SafeFile::Kind::Folder:
        return isFolder(path);
    case SafeFile::Kind::Other:
        break;
    }
    if (QFileInfo::exists(path))
        return Problem{path, QStringLiteral("is not a regular file; give another path")};
    return writableFolder(path);
}
