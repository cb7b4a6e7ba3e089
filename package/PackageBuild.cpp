// SPDX-License-Identifier: Apache-2.0
#include "package/PackageBuild.h"

#include "core/Logging.h"
#include "core/OutputFile.h"
#include "core/PathRules.h"
#include "core/SafeFile.h"
#include "core/TransientFolder.h"
#include "package/BuildPaths.h"
#include "package/ExpandedPackage.h"
#include "package/FlatPackage.h"
#include "package/ReplacedDocument.h"
#include "package/ScriptsFolder.h"
#include "package/SourceDate.h"
#include "package/StagedOutput.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <memory>
#include <optional>

namespace {

/// What the build edits must be there and must not be links that lead out of the package.
Result<> checkComponent(const QString &component, const Product &product)
{
    const QString scripts = scriptsFolder(component, product);
    if (Result<> folder = isRealFolder(component); !folder)
        return folder;
    return isRealFolder(QFileInfo(scripts.chopped(1)).path());
}

/// A package whose contents cannot be read has failed to expand before, so that counts as unsigned.
bool isSignedPackage(const QString &package)
{
    const TransientFolder folder(QStringLiteral("pct-"));
    if (!folder.made())
        return false;
    const Result<bool> known = isSigned(package, folder.path());
    return known && *known;
}

/// The settings that are about to be added are for nobody else on this machine.
Result<> makePrivate(const QString &folder)
{
    if (Result<> real = isRealFolder(folder); !real)
        return real;
    if (!QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner))
        return Problem{folder, QStringLiteral("cannot be closed to other users")};
    return {};
}

/// That no script was left as it is that could have been adapted when it was inspected.
Result<> checkAdapted(const ScriptsInspection &inspected, const ScriptsInspection &adapted)
{
    if (inspected.preinstallProblem.isEmpty() && !adapted.preinstallProblem.isEmpty())
        return Problem{QStringLiteral("preinstall"), adapted.preinstallProblem};
    if (inspected.postinstallProblem.isEmpty() && !adapted.postinstallProblem.isEmpty())
        return Problem{QStringLiteral("postinstall"), adapted.postinstallProblem};
    return {};
}

QString textOf(const Result<> &result)
{
    return result ? QString() : result.problem().text;
}

/// What the steps of one build share.
class Build
{
public:
    Build(const BuildPlan &plan, BuildReport &report);

    Result<> readSourceDate();
    Result<> checkPaths();
    Result<> clearWorkFolder();
    Result<> expand();
    Result<> inspect();
    Result<> collectSettings();
    Result<> addDocument();
    Result<> makeDefaultViewer();
    Result<> addIManageLogin();
    Result<> adaptScripts();
    Result<> limitTimes();
    Result<> flatten();
    Result<> removeLeftovers();

private:
    BuildPlan m_plan;
    const Product &m_product;
    BuildReport &m_report;
    BuildFiles m_files;
    std::shared_ptr<OutputFile> m_output;
    QString m_component;
    PackageInspection m_inspection;
    std::optional<qint64> m_sourceDate;
    ReplacedDocument m_replacedDocument;
    PackageSettings m_settings;
};

Build::Build(const BuildPlan &plan, BuildReport &report)
    : m_plan(plan)
    , m_product(*plan.product)
    , m_report(report)
    , m_files{QFileInfo(plan.inputPackage).absoluteFilePath(),
              QFileInfo(plan.outputPackage).absoluteFilePath(),
              plan.documentPath.isEmpty() ? temporaryDocumentPath()
                                          : QFileInfo(plan.documentPath).absoluteFilePath()}
    , m_output(plan.output ? plan.output
                           : std::make_shared<OutputFile>(m_files.output, OutputFile::Existing::Replace))
    , m_component(plan.workFolder + QLatin1Char('/') + m_product.componentPackage)
{
}

Result<> Build::readSourceDate()
{
    const Result<std::optional<qint64>> sourceDate = SourceDate::read();
    if (!sourceDate)
        return Problem{{}, sourceDate.problem().text};
    m_sourceDate = *sourceDate;
    return {};
}

Result<> Build::checkPaths()
{
    if (Result<> files = checkFiles(m_files); !files)
        return files;
    return PathRules::quotable(m_plan.workFolder);
}

Result<> Build::clearWorkFolder()
{
    return m_plan.removesWorkFolder ? removeWorkFolder(m_plan.workFolder, m_files) : Result<>();
}

Result<> Build::expand()
{
    Result<> expanded =
        m_plan.isExpanded ? Result<>() : FlatPackage::expand(m_files.input, m_plan.workFolder);
    if (!expanded)
        return expanded;
    return makePrivate(m_plan.workFolder);
}

Result<> Build::inspect()
{
    qCDebug(logPackage).noquote() << QStringLiteral("qsUnPkgFile_pkg: ") + m_component;
    if (Result<> component = checkComponent(m_component, m_product); !component)
        return component;
    m_inspection.signedByVendor =
        m_plan.isSignedByVendor ? *m_plan.isSignedByVendor : isSignedPackage(m_files.input);
    m_inspection.scripts = inspectScripts(scriptsFolder(m_component, m_product));
    m_report.productVersion = m_inspection.scripts.version;
    const QString &obstacle = m_inspection.scripts.obstacle;
    return obstacle.isEmpty() ? Result<>() : Problem{{}, obstacle};
}

Result<> Build::collectSettings()
{
    if (m_plan.collectSettings)
        m_settings = m_plan.collectSettings();
    return {};
}

/// A kept document stays only when the whole build succeeds.
Result<> Build::addDocument()
{
    const bool hasPlace = !m_plan.documentPath.isEmpty();
    if (Result<> aside = hasPlace ? m_replacedDocument.layAside(m_files.document) : Result<>(); !aside)
        return aside;
    const bool isKept = m_plan.keepsDocument && hasPlace;
    return ExpandedPackage::addSettings(m_component, m_product, m_settings.document, m_files.document,
                                        isKept ? SafeFile::Lasting::Yes : SafeFile::Lasting::No);
}

Result<> Build::makeDefaultViewer()
{
    return m_settings.wantsDefaultViewer ? ExpandedPackage::makeDefaultViewer(m_component) : Result<>();
}

Result<> Build::addIManageLogin()
{
    return m_settings.wantsIManageLogin ? ExpandedPackage::addIManageLogin(m_component, m_product)
                                        : Result<>();
}

/// A script that cannot be adapted is worth a warning, not the build.
Result<> Build::adaptScripts()
{
    ScriptsInspection &scripts = m_inspection.scripts;
    const ScriptsInspection inspected = scripts;
    scripts.preinstallProblem = textOf(ExpandedPackage::adaptPreinstall(m_component, m_product));
    scripts.postinstallProblem = textOf(ExpandedPackage::adaptPostinstall(m_component, m_product));
    m_report.warnings =
        warningsAbout(m_inspection, m_settings.wantsDefaultViewer, m_settings.wantsIManageLogin);
    return m_plan.insistsOnScripts ? checkAdapted(inspected, scripts) : Result<>();
}

/// In the folder rather than in the package: this holds for every command that flattens it.
Result<> Build::limitTimes()
{
    return m_sourceDate ? SourceDate::limitTimesBelow(m_plan.workFolder, *m_sourceDate) : Result<>();
}

/// The files are compared once more: what did not exist at the start may by now be one file under two names.
Result<> Build::flatten()
{
    if (Result<> staged = flattenStaged(m_plan.workFolder, m_product, *m_output); !staged)
        return staged;
    if (Result<> judged = m_plan.judge ? m_plan.judge(m_output->stagedPath()) : Result<>(); !judged)
        return judged;
    if (Result<> different = checkFilesDiffer(m_files); !different)
        return different;
    if (Result<> placed = m_output->place(); !placed)
        return placed;
    m_replacedDocument.forget();
    return {};
}

Result<> Build::removeLeftovers()
{
    if (!m_plan.removesWorkFolder)
        return {};
    if (const Result<> removed = removeWorkFolder(m_plan.workFolder, m_files); !removed) {
        qCDebug(logPackage) << "qsUnPkgFile remove fail!";
        m_report.warnings.append({QStringLiteral("work-folder-left"), removed.problem().line()});
    }
    return {};
}

} // namespace

QString defaultWorkFolder(const QString &inputPackage)
{
    return QStandardPaths::writableLocation(QStandardPaths::TempLocation) + QDir::separator() +
           QFileInfo(inputPackage).fileName();
}

std::vector<BuildStep> buildSteps(const BuildPlan &plan, BuildReport &report)
{
    const auto build = std::make_shared<Build>(plan, report);
    const auto step = [&build](const char *name, const char *failureLog, Result<> (Build::*run)()) {
        return BuildStep{QString::fromLatin1(name), QString::fromLatin1(failureLog),
                         [build, run] { return ((*build).*run)(); }};
    };
    return {
        step("read SOURCE_DATE_EPOCH", "SOURCE_DATE_EPOCH refused!", &Build::readSourceDate),
        step("check the paths", "paths refused!", &Build::checkPaths),
        step("clear the work folder", "qsUnPkgFile exist and remove fail!", &Build::clearWorkFolder),
        step("expand the package", "ExpandPkg fail!", &Build::expand),
        step("inspect the expanded package", "ExpandPkg fail!", &Build::inspect),
        step("collect the settings", "", &Build::collectSettings),
        step("add the configuration document", "EditorXmlConfigfileToPkg fail!", &Build::addDocument),
        step("make the product the default viewer", "SetDefaultPDF fail!", &Build::makeDefaultViewer),
        step("add the iManage sign-in", "set iManageLogin fail!", &Build::addIManageLogin),
        step("adapt the install scripts", "", &Build::adaptScripts),
        step("limit the times of the files", "times not limited!", &Build::limitTimes),
        step("flatten the package", "FlattenUnPkg fail!", &Build::flatten),
        step("remove the work folder", "", &Build::removeLeftovers),
    };
}

BuildReport buildPackage(const BuildPlan &plan)
{
    BuildReport report;
    for (const BuildStep &step : buildSteps(plan, report)) {
        const Result<> done = step.run();
        if (done)
            continue;
        qCDebug(logPackage).noquote() << step.failureLog;
        report.failedStep = step.name;
        report.problem = done.problem().line();
        break;
    }
    return report;
}
