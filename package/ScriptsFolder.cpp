// SPDX-License-Identifier: Apache-2.0
#include "package/ScriptsFolder.h"

#include "core/SafeFile.h"
#include "package/Failure.h"

#include <QDir>
#include <QFileInfo>

namespace {

/// A slash at the end would make a link look like the folder it leads to.
QString withoutSlash(const QString &folder)
{
    return folder.endsWith(QLatin1Char('/')) ? folder.chopped(1) : folder;
}

bool isKind(const QString &path, SafeFile::Kind wanted, const QString &description, QString *error)
{
    const SafeFile::Kind found = SafeFile::kindOf(path);
    if (found == wanted)
        return true;
    if (found == SafeFile::Kind::Missing)
        return fail(error, QStringLiteral("%1: there is no such %2 in the package").arg(path, description));
    return fail(error,
                QStringLiteral("%1: is not a %2; this package cannot be trusted").arg(path, description));
}

} // namespace

QString scriptsFolder(const QString &folder, bool editor)
{
    const QString direct = folder + QDir::separator() + QStringLiteral("Scripts/");
    if (QFileInfo::exists(direct))
        return direct;
    return folder + QDir::separator() + componentPackageName(editor) + QStringLiteral("/Scripts/");
}

QString componentPackageName(bool editor)
{
    return editor ? QStringLiteral("Pelix_PDF_Editor.pkg") : QStringLiteral("Pelix_PDF_Reader.pkg");
}

bool isRealFolder(const QString &path, QString *error)
{
    return isKind(withoutSlash(path), SafeFile::Kind::Folder, QStringLiteral("folder"), error);
}

bool isRealScript(const QString &scripts, const QString &name, QString *error)
{
    return isRealFolder(scripts, error) &&
           isKind(withoutSlash(scripts) + QLatin1Char('/') + name, SafeFile::Kind::File,
                  QStringLiteral("regular file"), error);
}
