// SPDX-License-Identifier: Apache-2.0
#include "profile/ManagedPreferences.h"

#include "profile/propertylist/PropertyListInput.h"

#include <QFile>
#include <QFileInfo>

#include <pwd.h>
#include <unistd.h>

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

} // namespace

std::optional<ManagedPreferences::File> ManagedPreferences::fileOf(const QString &folder,
                                                                   const QString &domain)
{
    const QString user = userName();
    const QString ofEverybody = QStringLiteral("%1/%2.plist").arg(folder, domain);
    const QString ofTheUser = QStringLiteral("%1/%2/%3.plist").arg(folder, user, domain);
    if (!user.isEmpty() && QFileInfo::exists(ofTheUser))
        return File{ofTheUser, read(ofTheUser)};
    if (QFileInfo::exists(ofEverybody))
        return File{ofEverybody, read(ofEverybody)};
    return std::nullopt;
}
