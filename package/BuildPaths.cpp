// SPDX-License-Identifier: Apache-2.0
#include "package/BuildPaths.h"

#include "core/Command.h"
#include "core/PathRules.h"
#include "core/SafeFile.h"

#include <QFileInfo>
#include <QStandardPaths>

namespace {

Result<> checkInput(const QString &input)
{
    if (QFileInfo(input).isFile())
        return {};
    return Problem{input, QStringLiteral("is not a file; choose the vendor's installer package")};
}

} // namespace

QString temporaryDocumentPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::TempLocation) + QStringLiteral("/ProfStore.xml");
}

Result<> checkFiles(const BuildFiles &files)
{
    for (const QString &path : {files.input, files.output}) {
        if (Result<> quotable = PathRules::quotable(path); !quotable)
            return quotable;
    }
    if (Result<> input = checkInput(files.input); !input)
        return input;
    if (Result<> output = PathRules::writable(files.output); !output)
        return output;
    return checkFilesDiffer(files);
}

Result<> checkFilesDiffer(const BuildFiles &files)
{
    return PathRules::allDiffer({{QStringLiteral("input"), files.input},
                                 {QStringLiteral("output"), files.output},
                                 {QStringLiteral("document"), files.document}});
}

Result<> checkWorkFolder(const QString &folder, const BuildFiles &files)
{
    if (SafeFile::kindOf(folder) == SafeFile::Kind::Missing)
        return {};
    if (SafeFile::kindOf(folder) != SafeFile::Kind::Folder)
        return Problem{folder, QStringLiteral("is in the way of the work folder and no folder; move it")};
    for (const QString &file : {files.input, files.output, files.document}) {
        if (PathRules::liesIn(folder, file))
            return Problem{
                file, QStringLiteral("lies in the work folder %1, which is removed; move it").arg(folder)};
    }
    return {};
}

Result<> removeWorkFolder(const QString &folder, const BuildFiles &files)
{
    if (SafeFile::kindOf(folder) == SafeFile::Kind::Missing)
        return {};
    if (Result<> dispensable = checkWorkFolder(folder, files); !dispensable)
        return dispensable;
    const CommandResult result = Command::runLine(QStringLiteral("rm -rf \"%1\"").arg(folder), {folder});
    if (!result.succeeded())
        return Problem{folder, result.problem()};
    if (SafeFile::kindOf(folder) != SafeFile::Kind::Missing)
        return Problem{folder, QStringLiteral("cannot be removed")};
    return {};
}
