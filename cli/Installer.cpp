// SPDX-License-Identifier: Apache-2.0
#include "cli/Installer.h"

#include "cli/HostCommands.h"
#include "cli/InputFile.h"
#include "cli/PathRules.h"
#include "cli/PrivateFolder.h"
#include "cli/Product.h"
#include "config/CCommon.h"
#include "core/Command.h"
#include "package/SourceDate.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace {

Verdict fileProblem(const QString &package)
{
    if (Verdict problem =
            wrongFile(package, FileKind::Package, QStringLiteral("the vendor's installer package")))
        return problem;
    if (kindOfFile(package) != FileKind::Package)
        return Problem{package,
                       QStringLiteral("is not an installer package; give the vendor's installer package")};
    return missingCommand({QStringLiteral("pkgutil"), QStringLiteral("installer"), QStringLiteral("sed"),
                           QStringLiteral("xar"), QStringLiteral("ditto"), QStringLiteral("sh"),
                           QStringLiteral("grep")});
}

/// What the system said of a command's failure can have nothing to do with the file.
bool isAboutThisMachine(const QString &cause)
{
    const auto errors = {ENOSPC, EDQUOT, EFBIG, EMFILE, ENFILE, ENOMEM, EAGAIN, EROFS, EIO};
    return cause.contains(QLatin1String("not enough room")) ||
           std::any_of(errors.begin(), errors.end(), [&cause](int error) {
               return cause.contains(QString::fromLocal8Bit(std::strerror(error)));
           });
}

/// `what` has a place for the cause.
Problem failure(const QString &package, const QString &what, const QString &cause)
{
    const QString advice = isAboutThisMachine(cause)
                               ? QStringLiteral("make room for it on this machine and run it again")
                               : QStringLiteral("give the vendor's original package");
    return {package, what.arg(cause) + QStringLiteral("; ") + advice};
}

/// The package under a name that the system's command takes for one: it goes by the ending, we by the
/// contents.
class NamedPackage
{
public:
    explicit NamedPackage(const QString &package)
        : m_path(package)
    {
        if (package.endsWith(QLatin1String(".pkg")))
            return;
        m_folder.emplace();
        const QString link = m_folder->filePath(QStringLiteral("package.pkg"));
        if (QFile::link(QFileInfo(package).absoluteFilePath(), link))
            m_path = link;
    }

    const QString &path() const { return m_path; }

private:
    QString m_path;
    std::optional<PrivateFolder> m_folder;
};

/// What the package calls itself, or why that cannot be said.
Verdict readPackageInfo(const QString &package, QString &info)
{
    const NamedPackage named(package);
    const CommandResult result = Command::run(
        QStringLiteral("installer"), {QStringLiteral("-pkginfo"), QStringLiteral("-pkg"), named.path()});
    info = QString::fromUtf8(result.standardOutput);
    if (result.succeeded())
        return std::nullopt;
    return failure(package, QStringLiteral("is not a readable installer package (%1)"), result.problem());
}

/// The check is a script, which needs more than the commands that take packages apart.
Problem uncheckable(const QString &package, const QString &cause)
{
    const QString reason = cause.isEmpty() ? QStringLiteral("no reason was given") : cause;
    return {package, QStringLiteral("could not be checked (%1); make sure that sh and grep work and that the "
                                    "temporary folder has room")
                         .arg(reason)};
}

/// The prescribed check leaves open what the file is instead, and whether it could be made at all.
Problem explainRejection(const QString &package, const Product &wanted, const QString &cause)
{
    QString info;
    if (const Verdict problem = readPackageInfo(package, info))
        return *problem;
    if (info.contains(wanted.title))
        return uncheckable(package, cause);
    const Product &other = productOf(!wanted.editor);
    if (info.contains(other.title))
        return {package, QStringLiteral("is the installer of the %1, not of the %2; use --product %3")
                             .arg(QString(other.title), QString(wanted.title), QString(other.word))};
    return {package, QStringLiteral("is not the installer of the %1; give the vendor's installer package")
                         .arg(QString(wanted.title))};
}

/// The same for a file that may be the installer of either product.
Problem explainRejection(const QString &package, const QString &cause)
{
    QString info;
    if (const Verdict problem = readPackageInfo(package, info))
        return *problem;
    for (const bool editor : {true, false}) {
        if (info.contains(productOf(editor).title))
            return explainRejection(package, productOf(editor), cause);
    }
    return {package, QStringLiteral("is the installer of neither the %1 nor the %2; give a package that this "
                                    "tool has made")
                         .arg(QString(productOf(true).title), QString(productOf(false).title))};
}

Verdict sourceDateProblem()
{
    std::optional<qint64> seconds;
    QString problem;
    if (SourceDate::read(&seconds, &problem))
        return std::nullopt;
    return Problem{QStringLiteral("SOURCE_DATE_EPOCH"), problem};
}

Verdict installerProblem(const QString &package, const Product &product, const QString &folder)
{
    Verdict problem = sourceDateProblem();
    if (!problem)
        problem = unquotable({package, folder});
    if (!problem)
        problem = fileProblem(package);
    QString cause;
    if (!problem && !CCommon::CheckPkg(NamedPackage(package).path(), product.editor, &cause))
        problem = explainRejection(package, product, cause);
    return problem;
}

Verdict contentProblem(const QString &package, const ScriptsInspection &scripts, bool makesDefaultViewer)
{
    if (scripts.customizedBefore)
        return Problem{package, QStringLiteral("was customized before (it holds a ProfStore.xml already); "
                                               "give the vendor's original package")};
    if (!scripts.obstacle.isEmpty())
        return Problem{package, QStringLiteral("no build can work on it, because %1; give the vendor's "
                                               "original package")
                                    .arg(scripts.obstacle)};
    if (makesDefaultViewer && scripts.holdsViewerTool)
        return Problem{package,
                       QStringLiteral("holds a \"duti\" in its scripts already, so it cannot be made "
                                      "the default PDF viewer; give the vendor's original package")};
    return std::nullopt;
}

} // namespace

Problem unreadableScripts(const QString &package, const QString &cause)
{
    return failure(package, QStringLiteral("its install scripts cannot be read (%1)"), cause);
}

InstallerCheck checkInstaller(const QString &package, const Product &product, const QString &emptyFolder,
                              bool makesDefaultViewer)
{
    InstallerCheck check;
    check.refusal = installerProblem(package, product, emptyFolder);
    if (check.refusal)
        return check;
    QString error;
    check.inspection = inspectPackage(package, product.editor, emptyFolder, &error);
    check.refusal = check.inspection ? contentProblem(package, check.inspection->scripts, makesDefaultViewer)
                                     : unreadableScripts(package, error);
    return check;
}

const Product *productOfInstaller(const QString &package, Verdict &problem)
{
    problem = fileProblem(package);
    if (problem)
        return nullptr;
    QString cause;
    const NamedPackage named(package);
    for (const bool editor : {true, false}) {
        if (CCommon::CheckPkg(named.path(), editor, &cause))
            return &productOf(editor);
    }
    problem = explainRejection(package, cause);
    return nullptr;
}
