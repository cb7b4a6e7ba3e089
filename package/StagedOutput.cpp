// SPDX-License-Identifier: Apache-2.0
#include "package/StagedOutput.h"

#include "config/CCommon.h"
#include "core/Command.h"
#include "core/SafeFile.h"
#include "package/Failure.h"
#include "package/ScriptsFolder.h"

#include <QFileInfo>

namespace {

QString besides(const QString &output)
{
    return QFileInfo(output).absolutePath() + QStringLiteral("/.pct-build-XXXXXX");
}

bool listsScripts(const QByteArray &listing, bool editor)
{
    const QByteArray member = componentPackageName(editor).toLatin1() + "/Scripts";
    return listing.split('\n').contains(member);
}

} // namespace

StagedOutput::StagedOutput(const QString &output)
    : m_output(output)
    , m_folder(besides(output))
{
}

bool StagedOutput::flatten(const QString &folder, bool editor, QString *error)
{
    if (!m_folder.isValid())
        return fail(error,
                    QStringLiteral("%1: cannot write beside it: %2").arg(m_output, m_folder.errorString()));
    return CCommon::FlattenUnPkg(folder, path(), error) && check(editor, error);
}

bool StagedOutput::moveIntoPlace(QString *error)
{
    QString cause;
    return SafeFile::moveIntoPlace(path(), m_output, &cause) ||
           fail(error, m_output + QStringLiteral(": ") + cause);
}

QString StagedOutput::path() const
{
    return m_folder.filePath(QFileInfo(m_output).fileName());
}

bool StagedOutput::check(bool editor, QString *error) const
{
    if (SafeFile::kindOf(path()) != SafeFile::Kind::File || QFileInfo(path()).size() == 0)
        return fail(error, QStringLiteral("pkgutil made no package"));
    const CommandResult listing =
        Command::run(QStringLiteral("xar"), {QStringLiteral("-t"), QStringLiteral("-f"), path()});
    if (!listing.succeeded())
        return fail(error, listing.problem());
    return listsScripts(listing.standardOutput, editor) ||
           fail(error, QStringLiteral("the package that pkgutil made has no scripts of the product"));
}
