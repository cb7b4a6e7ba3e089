// SPDX-License-Identifier: Apache-2.0
#include "package/StagedOutput.h"

#include "config/CCommon.h"
#include "core/Command.h"
#include "core/OutputFile.h"
#include "package/Failure.h"
#include "package/ScriptsFolder.h"

namespace {

bool listsScripts(const QByteArray &listing, bool editor)
{
    const QByteArray member = componentPackageName(editor).toLatin1() + "/Scripts";
    return listing.split('\n').contains(member);
}

bool readBack(const OutputFile &output, bool editor, QString *error)
{
    if (!output.isStaged())
        return fail(error, QStringLiteral("pkgutil made no package"));
    const CommandResult listing = Command::run(
        QStringLiteral("xar"), {QStringLiteral("-t"), QStringLiteral("-f"), output.stagedPath()});
    if (!listing.succeeded())
        return fail(error, listing.problem());
    return listsScripts(listing.standardOutput, editor) ||
           fail(error, QStringLiteral("the package that pkgutil made has no scripts of the product"));
}

} // namespace

bool flattenStaged(const QString &folder, bool editor, OutputFile &output, QString *error)
{
    QString cause;
    if (!output.stage(&cause))
        return fail(error, QStringLiteral("%1: cannot write beside it: %2").arg(output.path(), cause));
    return CCommon::FlattenUnPkg(folder, output.stagedPath(), error) && readBack(output, editor, error);
}
