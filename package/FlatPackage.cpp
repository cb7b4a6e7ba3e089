// SPDX-License-Identifier: Apache-2.0
#include "package/FlatPackage.h"

#include "config/CCommon.h"
#include "config/Product.h"
#include "core/Command.h"
#include "core/Logging.h"
#include "core/TransientFolder.h"

#include <QFile>
#include <QFileInfo>
#include <QTextStream>

namespace {

Result<> ended(const CommandResult &result)
{
    return result.succeeded() ? Result<>() : Problem{{}, result.problem()};
}

Result<QString> readCheckScript()
{
    QFile resource(QStringLiteral(":/checkid"));
    if (!resource.open(QIODevice::ReadOnly | QIODevice::Text)) {
        qCDebug(logPackage) << "CheckPkg open file = error" << resource.error();
        return Problem{{}, resource.errorString()};
    }
    return QTextStream(&resource).readAll();
}

Result<> writeCheckScript(const QString &path, const QString &script)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite | QIODevice::Text)) {
        qCDebug(logPackage) << "CheckPkg open tempfile fail";
        return Problem{{}, file.errorString()};
    }
    QTextStream stream(&file);
    stream << script;
    stream.flush();
    return stream.status() == QTextStream::Ok ? Result<>() : Problem{{}, file.errorString()};
}

Result<> placeCheckScript(const QString &path)
{
    const Result<QString> script = readCheckScript();
    return script ? writeCheckScript(path, *script) : script.problem();
}

/// The script's own answer is an exit code without a word.
bool isAnswer(const CommandResult &result)
{
    return result.outcome == CommandResult::Outcome::Finished && result.standardError.isEmpty();
}

} // namespace

Result<bool> FlatPackage::isInstallerOf(const QString &package, const Product &product)
{
    if (!QFileInfo(package).isFile())
        return false;
    // Nobody else may change the script between its writing and its run.
    const TransientFolder folder(QStringLiteral("pct-"));
    const QString path = folder.filePath(QStringLiteral("checkid"));
    if (const Result<> placed = placeCheckScript(path); !placed)
        return placed.problem();
    const QStringList arguments = {path, package, product.word};
    qCDebug(logPackage) << "CheckPkgValid cmd:" << arguments;
    const CommandResult result = Command::run(QStringLiteral("sh"), arguments);
    if (result.succeeded() || isAnswer(result))
        return result.succeeded();
    return Problem{{}, result.problem()};
}

Result<> FlatPackage::expand(const QString &package, const QString &folder)
{
    const QString command = QStringLiteral("pkgutil --expand \"%1\" \"%2\"").arg(package, folder);
    qCDebug(logPackage).noquote() << QStringLiteral("ExpandPkg qscmd:") + command;
    const CommandResult result = Command::runLine(command, {package, folder});
    qCDebug(logPackage) << "finish ExpandPkg";
    return ended(result);
}

Result<> FlatPackage::flatten(const QString &folder, const QString &package)
{
    const QString command = QStringLiteral("pkgutil --flatten \"%1\" \"%2\"").arg(folder, package);
    const CommandResult result = Command::runLine(command, {folder, package});
    qCDebug(logPackage) << "finish FlattenUnPkg";
    return ended(result);
}

bool CCommon::CheckPkg(QString pkgPath, bool bEditor)
{
    const Result<bool> isInstaller = FlatPackage::isInstallerOf(pkgPath, Product::of(bEditor));
    return isInstaller && *isInstaller;
}

bool CCommon::ExpandPkg(QString pkgPath, QString destDir)
{
    static_cast<void>(FlatPackage::expand(pkgPath, destDir));
    return true;
}

bool CCommon::FlattenUnPkg(QString srcDir, QString outPkg)
{
    return bool(FlatPackage::flatten(srcDir, outPkg));
}
