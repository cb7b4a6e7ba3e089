// SPDX-License-Identifier: Apache-2.0
#include "cli/PathRules.h"

#include "core/SafeFile.h"
#include "package/BuildPaths.h"

#include <QFile>
#include <QFileInfo>

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

bool samePlace(const QString &first, const QString &second)
{
    if (SafeFile::sameFile(first, second))
        return true;
    return isMissing(first) && isMissing(second) && SafeFile::sameFile(folderOf(first), folderOf(second)) &&
           QFileInfo(first).fileName().compare(QFileInfo(second).fileName(), Qt::CaseInsensitive) == 0;
}

bool isFileName(const QString &name)
{
    return !name.isEmpty() && name != QLatin1String(".") && name != QLatin1String("..");
}

QString folderProblem(const QString &path)
{
    const QByteArray folder = QFile::encodeName(folderOf(path) + QLatin1Char('/'));
    if (::access(folder.constData(), W_OK | X_OK) == 0)
        return {};
    if (errno == ENOENT || errno == ENOTDIR)
        return QStringLiteral("its folder does not exist; make the folder first");
    return QStringLiteral("its folder cannot be written; change its permissions or use another one");
}

QString targetProblem(const QString &path, bool force)
{
    if (!isFileName(QFileInfo(path).fileName()))
        return QStringLiteral("is a folder; give the name of a file in it");
    switch (SafeFile::kindOf(path)) {
    case SafeFile::Kind::Missing:
        return folderProblem(path);
    case SafeFile::Kind::File:
        return force ? folderProblem(path) : QStringLiteral("exists already; use --force to replace it");
    case SafeFile::Kind::Link:
        return QStringLiteral("is a link, which is never written through; give the file's own path");
    case SafeFile::Kind::Folder:
        return QStringLiteral("is a folder; give the name of a file in it");
    case SafeFile::Kind::Other:
        break;
    }
    return QFileInfo::exists(path) ? QStringLiteral("is not a regular file; give another path")
                                   : folderProblem(path);
}

} // namespace

Verdict sharedFile(const QList<NamedPath> &files)
{
    for (int i = 0; i < files.size(); ++i) {
        for (int j = 0; j < i; ++j) {
            const bool given = !files.at(i).path.isEmpty() && !files.at(j).path.isEmpty();
            if (given && samePlace(files.at(i).path, files.at(j).path))
                return Problem{files.at(i).path, QStringLiteral("is both the %1 and the %2; give two files")
                                                     .arg(files.at(j).role, files.at(i).role)};
        }
    }
    return std::nullopt;
}

Verdict unquotable(const QStringList &paths)
{
    for (const QString &path : paths) {
        if (!checkQuoting(path, nullptr))
            return Problem{path, QStringLiteral("holds a double quote, which no command line of the package "
                                                "tools can carry; rename the file or its folder")};
    }
    return std::nullopt;
}

Verdict unwritable(const QString &path, bool force)
{
    const QString problem = targetProblem(path, force);
    return problem.isEmpty() ? Verdict() : Problem{path, problem};
}
