// SPDX-License-Identifier: Apache-2.0
#include "hosttools/profiles/ProfileStore.h"

#include "hosttools/base/Error.h"
#include "hosttools/base/Files.h"
#include "hosttools/profiles/ConfigurationProfile.h"
#include "hosttools/security/Document.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <algorithm>
#include <cerrno>
#include <tuple>
#include <unistd.h>

using namespace FlatPkg;

namespace ProfileStore {

namespace {

QByteArray folder()
{
    const QByteArray named = qgetenv("PCT_PROFILES_DIR");
    if (!named.isEmpty())
        return named;
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return QFile::encodeName(data + QStringLiteral("/pct/profiles"));
}

/// An identifier is any text; its hash is always a file name.
QByteArray pathOf(const QByteArray &identifier)
{
    const QByteArray hash = QCryptographicHash::hash(identifier, QCryptographicHash::Sha256);
    return folder() + '/' + hash.toHex() + ".plist";
}

void makeFolder()
{
    if (access(folder().constData(), F_OK) == 0)
        return;
    if (!QDir().mkpath(QFile::decodeName(folder())) || chmod(folder().constData(), 0700) != 0)
        throw systemError(folder() + ": cannot be made");
}

bool isOlder(const InstalledProfile &left, const InstalledProfile &right)
{
    return std::tie(left.installed.tv_sec, left.installed.tv_nsec) <
           std::tie(right.installed.tv_sec, right.installed.tv_nsec);
}

InstalledProfile readInstalled(const QByteArray &name)
{
    const QByteArray path = folder() + '/' + name;
    return within(path, [&] {
        const struct stat status = statusIn(openFolder(folder()).get(), name);
        if (!S_ISREG(status.st_mode))
            throw Error("is not a file; remove it");
        PropertyList::Node profile = ConfigurationProfile::read(Document::read(path, Document::largestSize));
        return InstalledProfile{std::move(profile), status.st_mtim};
    });
}

} // namespace

std::vector<InstalledProfile> all()
{
    std::vector<InstalledProfile> profiles;
    if (access(folder().constData(), F_OK) != 0)
        return profiles;
    const FileDescriptor opened = within(folder(), [] { return openFolder(folder()); });
    for (const QByteArray &name : namesIn(opened.get()))
        if (name.endsWith(".plist"))
            profiles.push_back(readInstalled(name));
    std::stable_sort(profiles.begin(), profiles.end(), isOlder);
    return profiles;
}

void install(const QByteArray &path)
{
    const PropertyList::Node profile = within(
        path, [&] { return ConfigurationProfile::read(Document::read(path, Document::largestSignedSize)); });
    const QByteArray xml = PropertyList::toXml(profile.get());
    if (xml.size() > Document::largestSize)
        throw Error(path + ": is too large to be installed");
    makeFolder();
    const QByteArray target = pathOf(ConfigurationProfile::identifier(profile.get()));
    within(target, [&] { Document::replace(target, xml); });
}

void remove(const QByteArray &identifier)
{
    if (unlink(pathOf(identifier).constData()) == 0)
        return;
    if (errno == ENOENT)
        throw Error("there is no profile \"" + identifier + "\"; \"profiles list\" lists them");
    throw systemError(pathOf(identifier) + ": cannot be removed");
}

} // namespace ProfileStore
