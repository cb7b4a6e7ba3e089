// SPDX-License-Identifier: Apache-2.0
#include "config/CCommon.h"
#include "core/Command.h"
#include "core/SafeFile.h"
#include "core/TransientFolder.h"
#include "package/Failure.h"
#include "core/Logging.h"
#include "package/ProductVersion.h"
#include "package/ScriptLines.h"
#include "package/ScriptsFolder.h"

#include <QFile>
#include <QFileInfo>
#include <QTextStream>

namespace {

void setCause(QString *error, const CommandResult &result)
{
    if (error)
        *error = result.problem();
}

bool readCheckScript(QString &script, QString *error)
{
    QFile resource(QStringLiteral(":/checkid"));
    if (!resource.open(QIODevice::ReadOnly | QIODevice::Text)) {
        qCDebug(logPackage) << "CheckPkg open file = error" << resource.error();
        return fail(error, resource.errorString());
    }
    script = QTextStream(&resource).readAll();
    return true;
}

bool writeCheckScript(const QString &path, const QString &script, QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite | QIODevice::Text)) {
        qCDebug(logPackage) << "CheckPkg open tempfile fail";
        return fail(error, file.errorString());
    }
    QTextStream stream(&file);
    stream << script;
    stream.flush();
    return stream.status() == QTextStream::Ok || fail(error, file.errorString());
}

/// The script's own answer is an exit code without a word.
bool isAnswer(const CommandResult &result)
{
    return result.outcome == CommandResult::Outcome::Finished && result.standardError.isEmpty();
}

} // namespace

bool CCommon::CheckPkg(QString pkgPath, bool bEditor, QString *error)
{
    if (error)
        error->clear();
    if (!QFileInfo(pkgPath).isFile())
        return false;
    QString script;
    // Nobody else may change the script between its writing and its run.
    const TransientFolder folder(QStringLiteral("pct-"));
    const QString path = folder.filePath(QStringLiteral("checkid"));
    if (!readCheckScript(script, error) || !writeCheckScript(path, script, error))
        return false;
    const QStringList arguments = {path, pkgPath,
                                   bEditor ? QStringLiteral("editor") : QStringLiteral("reader")};
    qCDebug(logPackage) << "CheckPkgValid cmd:" << arguments;
    const CommandResult result = Command::run(QStringLiteral("sh"), arguments);
    if (!isAnswer(result))
        setCause(error, result);
    return result.succeeded();
}

bool CCommon::ExpandPkg(QString pkgPath, QString destDir, QString *error)
{
    const QString command = QStringLiteral("pkgutil --expand \"%1\" \"%2\"").arg(pkgPath, destDir);
    qCDebug(logPackage).noquote() << QStringLiteral("ExpandPkg qscmd:") + command;
    setCause(error, Command::runLine(command, {pkgPath, destDir}));
    qCDebug(logPackage) << "finish ExpandPkg";
    return true;
}

bool CCommon::FlattenUnPkg(QString srcDir, QString outPkg, QString *error)
{
    const QString command = QStringLiteral("pkgutil --flatten \"%1\" \"%2\"").arg(srcDir, outPkg);
    const CommandResult result = Command::runLine(command, {srcDir, outPkg});
    setCause(error, result);
    qCDebug(logPackage) << "finish FlattenUnPkg";
    return result.succeeded();
}

QString CCommon::GetAppVersion(QString pkgDir, bool bEditor)
{
    const Result<QString> version = ReadAppVersion(pkgDir, bEditor);
    return version ? *version : QString();
}

Result<QString> CCommon::ReadAppVersion(QString pkgDir, bool bEditor)
{
    const QString scripts = scriptsFolder(pkgDir, bEditor);
    qCDebug(logPackage).noquote() << QStringLiteral("qsTemp:") + scripts;
    const QString path = scripts + QStringLiteral("postinstall");
    if (SafeFile::kindOf(path) == SafeFile::Kind::Missing)
        return QString();
    const Result<QString> postinstall = readScript(path);
    if (!postinstall)
        return postinstall.problem();
    return productVersion(*postinstall);
}
