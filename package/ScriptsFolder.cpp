// SPDX-License-Identifier: Apache-2.0
#include "package/ScriptsFolder.h"

#include "config/Product.h"
#include "core/SafeFile.h"

#include <QDir>
#include <QFileInfo>

namespace {

/// A slash at the end would make a link look like the folder it leads to.
QString withoutSlash(const QString &folder)
{
    return folder.endsWith(QLatin1Char('/')) ? folder.chopped(1) : folder;
}

Result<> isKind(const QString &path, SafeFile::Kind wanted, const QString &description)
{
    const SafeFile::Kind found = SafeFile::kindOf(path);
    if (found == wanted)
        return {};
    if (found == SafeFile::Kind::Missing)
        return Problem{path, QStringLiteral("there is no such %1 in the package").arg(description)};
    return Problem{path, QStringLiteral("is not a %1; this package cannot be trusted").arg(description)};
}

} // namespace

QString scriptsFolder(const QString &folder, const Product &product)
{
    const QString direct = folder + QDir::separator() + QStringLiteral("Scripts/");
    if (QFileInfo::exists(direct))
        return direct;
    return folder + QDir::separator() + product.componentPackage + QStringLiteral("/Scripts/");
}

Result<> isRealFolder(const QString &path)
{
    return isKind(withoutSlash(path), SafeFile::Kind::Folder, QStringLiteral("folder"));
}

Result<> isRealScript(const QString &scripts, const QString &name)
{
    if (Result<> folder = isRealFolder(scripts); !folder)
        return folder;
    return isKind(withoutSlash(scripts) + QLatin1Char('/') + name, SafeFile::Kind::File,
                  QStringLiteral("regular file"));
}
