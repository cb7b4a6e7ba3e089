// SPDX-License-Identifier: Apache-2.0
#include "cli/Installer.h"

#include "cli/HostCommands.h"
#include "cli/InputFile.h"
#include "cli/PrivateFolder.h"
#include "config/Product.h"
#include "core/Command.h"
#include "core/PathRules.h"
#include "package/FlatPackage.h"
#include "package/SourceDate.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace {

Result<> checkPackageFile(const QString &package)
{
    const QString wanted = QStringLiteral("the vendor's installer package");
    if (Result<> file = checkFile(package, FileKind::Package, wanted); !file)
        return file;
    if (kindOfFile(package) != FileKind::Package)
        return Problem{package, QStringLiteral("is not an installer package; give ") + wanted};
    return haveCommands({QStringLiteral("pkgutil"), QStringLiteral("installer"), QStringLiteral("sed"),
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

/// What the package calls itself.
Result<QString> readPackageInfo(const QString &package)
{
    const NamedPackage named(package);
    const CommandResult result = Command::run(
        QStringLiteral("installer"), {QStringLiteral("-pkginfo"), QStringLiteral("-pkg"), named.path()});
    if (!result.succeeded())
        return failure(package, QStringLiteral("is not a readable installer package (%1)"), result.problem());
    return QString::fromUtf8(result.standardOutput);
}

/// The check is a script, which needs more than the commands that take packages apart.
Problem uncheckable(const QString &package, const QString &cause)
{
    const QString reason = cause.isEmpty() ? QStringLiteral("no reason was given") : cause;
    return {package, QStringLiteral("could not be checked (%1); make sure that sh and grep work and that the "
                                    "temporary folder has room")
                         .arg(reason)};
}

/// A problem without a text when the file is another one.
Result<> checkInstallerOf(const Product &product, const NamedPackage &package)
{
    const Result<bool> isInstaller = FlatPackage::isInstallerOf(package.path(), product);
    if (!isInstaller)
        return isInstaller.problem();
    return *isInstaller ? Result<>() : Problem();
}

/// The prescribed check leaves open what the file is instead, and whether it could be made at all.
Problem explainRejection(const QString &package, const Product &wanted, const QString &cause)
{
    const Result<QString> info = readPackageInfo(package);
    if (!info)
        return info.problem();
    if (info->contains(wanted.title))
        return uncheckable(package, cause);
    const Product &other = wanted.other();
    if (info->contains(other.title))
        return {package, QStringLiteral("is the installer of the %1, not of the %2; use --product %3")
                             .arg(QString(other.title), QString(wanted.title), QString(other.word))};
    return {package, QStringLiteral("is not the installer of the %1; give the vendor's installer package")
                         .arg(QString(wanted.title))};
}

/// The same for a file that may be the installer of either product.
Problem explainRejection(const QString &package, const QString &cause)
{
    const Result<QString> info = readPackageInfo(package);
    if (!info)
        return info.problem();
    for (const Product &product : Product::all()) {
        if (info->contains(product.title))
            return explainRejection(package, product, cause);
    }
    return {package, QStringLiteral("is the installer of neither the %1 nor the %2; give a package that this "
                                    "tool has made")
                         .arg(QString(Product::editor().title), QString(Product::reader().title))};
}

Result<> checkSourceDate()
{
    const Result<std::optional<qint64>> sourceDate = SourceDate::read();
    return sourceDate ? Result<>() : sourceDate.problem();
}

Result<> checkBeforeOpening(const QString &package, const Product &product, const QString &folder)
{
    if (Result<> sourceDate = checkSourceDate(); !sourceDate)
        return sourceDate;
    for (const QString &path : {package, folder}) {
        if (Result<> quotable = PathRules::quotable(path); !quotable)
            return quotable;
    }
    if (Result<> file = checkPackageFile(package); !file)
        return file;
    if (const Result<> installer = checkInstallerOf(product, NamedPackage(package)); !installer)
        return explainRejection(package, product, installer.problem().text);
    return {};
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
    check.verdict = checkBeforeOpening(package, product, emptyFolder);
    if (!check.verdict)
        return check;
    const Result<PackageInspection> inspection = inspectPackage(package, product, emptyFolder);
    if (!inspection) {
        check.verdict = unreadableScripts(package, inspection.problem().line());
        return check;
    }
    check.inspection = *inspection;
    check.verdict = checkContents(package, inspection->scripts, makesDefaultViewer);
    return check;
}

Result<const Product *> productOfInstaller(const QString &package)
{
    if (const Result<> file = checkPackageFile(package); !file)
        return file.problem();
    QString cause;
    const NamedPackage named(package);
    for (const Product &product : Product::all()) {
        const Result<> installer = checkInstallerOf(product, named);
        if (installer)
            return &product;
        cause = installer.problem().text;
    }
    return explainRejection(package, cause);
}
