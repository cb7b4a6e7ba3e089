// SPDX-License-Identifier: Apache-2.0
#include "profile/ManagedPreferences.h"

#include "profile/propertylist/PropertyListInput.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

using ManagedPreferences::File;

namespace {

QString userName()
{
    const passwd *user = ::getpwuid(::getuid());
    return user ? QFile::decodeName(user->pw_name) : QString();
}

Result<QByteArray> read(const QString &path)
{
    QFile file(path);
    // Opening a named pipe would wait for its writer.
    if (!QFileInfo(path).isFile())
        return Problem{{}, QStringLiteral("it is no regular file")};
    if (!file.open(QIODevice::ReadOnly))
        return Problem{{}, file.errorString()};
    return file.read(PropertyListInput::maximumBytes + 1);
}

/// None when there certainly is no file; one that is out of reach is there.
std::optional<File> fileAt(const QString &path)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) == 0)
        return File{path, read(path)};
    if (errno == ENOENT || errno == ENOTDIR)
        return std::nullopt;
    return File{path, Problem{{}, QString::fromLocal8Bit(std::strerror(errno))}};
}

std::optional<File> fileOfUser(const QString &folder, const QString &user, const QString &domain)
{
    if (user.isEmpty())
        return std::nullopt;
    return fileAt(QStringLiteral("%1/%2/%3.plist").arg(folder, user, domain));
}

QStringList usersWithin(const QString &folder)
{
    if (::geteuid() != 0)
        return {userName()};
    // Whatever is there, because what is out of reach may be a folder.
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                  QDir::Name);
}

std::optional<File> fileOfEverybody(const QString &folder, const QString &domain)
{
    return fileAt(QStringLiteral("%1/%2.plist").arg(folder, domain));
}

} // namespace

std::optional<File> ManagedPreferences::fileOf(const QString &folder, const QString &domain)
{
    const std::optional<File> ofTheUser = fileOfUser(folder, userName(), domain);
    return ofTheUser ? ofTheUser : fileOfEverybody(folder, domain);
}

QList<File> ManagedPreferences::filesOf(const QString &folder, const QString &domain)
{
    QList<File> files;
    if (const std::optional<File> ofEverybody = fileOfEverybody(folder, domain))
        files.append(*ofEverybody);
    for (const QString &user : usersWithin(folder)) {
        if (const std::optional<File> ofUser = fileOfUser(folder, user, domain))
            files.append(*ofUser);
    }
    return files;
}
