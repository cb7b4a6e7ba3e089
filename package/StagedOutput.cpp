// SPDX-License-Identifier: Apache-2.0
#include "package/StagedOutput.h"

#include "config/CCommon.h"
#include "core/Command.h"
#include "core/OutputFile.h"
#include "package/ScriptsFolder.h"

namespace {

bool listsScripts(const QByteArray &listing, bool editor)
{
    const QByteArray member = componentPackageName(editor).toLatin1() + "/Scripts";
    return listing.split('\n').contains(member);
}

Result<> readBack(const OutputFile &output, bool editor)
{
    if (!output.isStaged())
        return Problem{{}, QStringLiteral("pkgutil made no package")};
    const CommandResult listing = Command::run(
        QStringLiteral("xar"), {QStringLiteral("-t"), QStringLiteral("-f"), output.stagedPath()});
    if (!listing.succeeded())
        return Problem{{}, listing.problem()};
    if (!listsScripts(listing.standardOutput, editor))
        return Problem{{}, QStringLiteral("the package that pkgutil made has no scripts of the product")};
    return {};
}

} // namespace

Result<> flattenStaged(const QString &folder, bool editor, OutputFile &output)
{
    if (const Result<> staged = output.stage(); !staged)
        return Problem{output.path(), QStringLiteral("cannot write beside it: ") + staged.problem().text};
    QString cause;
    if (!CCommon::FlattenUnPkg(folder, output.stagedPath(), &cause))
        return Problem{{}, cause};
    return readBack(output, editor);
}
