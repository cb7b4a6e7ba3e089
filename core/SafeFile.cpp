// SPDX-License-Identifier: Apache-2.0
#include "core/SafeFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <sys/stat.h>

namespace {

bool fail(QString *error, const QString &text)
{
    if (error)
        *error = text;
    return false;
}

bool mayReplace(const QString &path, QString *error)
{
    switch (SafeFile::kindOf(path)) {
    case SafeFile::Kind::Missing:
    case SafeFile::Kind::File:
        return true;
    case SafeFile::Kind::Link:
        return fail(error, QStringLiteral("is a link"));
    default:
        return fail(error, QStringLiteral("is not a regular file"));
    }
}

} // namespace

SafeFile::Kind SafeFile::kindOf(const QString &path)
{
    struct stat status = {};
    if (::lstat(QFile::encodeName(path).constData(), &status) != 0)
        return errno == ENOENT || errno == ENOTDIR ? Kind::Missing : Kind::Other;
    if (S_ISLNK(status.st_mode))
        return Kind::Link;
    if (S_ISREG(status.st_mode))
        return Kind::File;
    return S_ISDIR(status.st_mode) ? Kind::Folder : Kind::Other;
}

bool SafeFile::sameFile(const QString &first, const QString &second)
{
    struct stat one = {};
    struct stat other = {};
    return ::stat(QFile::encodeName(first).constData(), &one) == 0 &&
           ::stat(QFile::encodeName(second).constData(), &other) == 0 && one.st_dev == other.st_dev &&
           one.st_ino == other.st_ino;
}

bool SafeFile::copyNew(const QString &from, const QString &to, QString *error)
{
    if (kindOf(to) != Kind::Missing)
        return fail(error, QStringLiteral("exists already"));
    QFile source(from);
    if (!source.copy(to))
        return fail(error, source.errorString());
    return true;
}

bool SafeFile::replaceContents(const QString &path, const QByteArray &bytes, QString *error)
{
    if (!mayReplace(path, error))
        return false;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        return fail(error, file.errorString());
    return true;
}
