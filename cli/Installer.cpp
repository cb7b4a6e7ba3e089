// SPDX-License-Identifier: Apache-2.0
#include "cli/Installer.h"

#include "cli/HostCommands.h"
#include "cli/InputFile.h"
#include "cli/Product.h"
#include "config/CCommon.h"
#include "core/Command.h"
#include "core/SafeFile.h"

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
                           QStringLiteral("xar"), QStringLiteral("ditto")});
}

/// The only question that the prescribed check leaves open: what the file is instead.
Problem explainRejection(const QString &package, const Product &wanted)
{
    const CommandResult info = Command::run(QStringLiteral("installer"),
                                            {QStringLiteral("-pkginfo"), QStringLiteral("-pkg"), package});
    if (!info.succeeded())
        return {package, QStringLiteral("is not a readable installer package (%1); give the vendor's "
                                        "installer package")
                             .arg(info.problem())};
    const Product &other = productOf(!wanted.editor);
    if (QString::fromUtf8(info.standardOutput).contains(other.title))
        return {package, QStringLiteral("is the installer of the %1, not of the %2; use --product %3")
                             .arg(QString(other.title), QString(wanted.title), QString(other.word))};
    return {package, QStringLiteral("is not the installer of the %1; give the vendor's installer package")
                         .arg(QString(wanted.title))};
}

Verdict installerProblem(const QString &package, const Product &product)
{
    Verdict problem = fileProblem(package);
    if (!problem && !CCommon::CheckPkg(package, product.editor))
        problem = explainRejection(package, product);
    return problem;
}

Verdict contentProblem(const QString &package, const PackageInspection &inspection, const QString &folder)
{
    if (inspection.scripts.customizedBefore)
        return Problem{package, QStringLiteral("was customized before (it holds a ProfStore.xml already); "
                                               "give the vendor's original package")};
    if (SafeFile::kindOf(folder + QStringLiteral("/Scripts/postinstall")) != SafeFile::Kind::File)
        return Problem{package, QStringLiteral("has no postinstall script to switch the settings on; give "
                                               "the vendor's original package")};
    return std::nullopt;
}

} // namespace

InstallerCheck checkInstaller(const QString &package, const Product &product, const QString &emptyFolder)
{
    InstallerCheck check;
    check.refusal = installerProblem(package, product);
    if (check.refusal)
        return check;
    QString error;
    check.inspection = inspectPackage(package, product.editor, emptyFolder, &error);
    if (check.inspection)
        check.refusal = contentProblem(package, *check.inspection, emptyFolder);
    else
        check.refusal = Problem{package, QStringLiteral("its install scripts cannot be read (%1); give the "
                                                        "vendor's original package")
                                             .arg(error)};
    return check;
}

const Product *productOfInstaller(const QString &package, Verdict &problem)
{
    problem = fileProblem(package);
    if (problem)
        return nullptr;
    for (const bool editor : {true, false}) {
        if (CCommon::CheckPkg(package, editor))
            return &productOf(editor);
    }
    problem = explainRejection(package, productOf(true));
    return nullptr;
}
