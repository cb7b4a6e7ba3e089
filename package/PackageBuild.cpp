// SPDX-License-Identifier: Apache-2.0
#include "package/PackageBuild.h"

#include "config/CCommon.h"
#include "core/Logging.h"
#include "core/OutputFile.h"
#include "core/PathRules.h"
#include "core/SafeFile.h"
#include "core/TransientFolder.h"
#include "package/BuildPaths.h"
#include "package/Failure.h"
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
bool checkComponent(const QString &component, bool editor, QString *problem)
{
    const QString scripts = scriptsFolder(component, editor);
    return ended(isRealFolder(component), problem) &&
           ended(isRealFolder(QFileInfo(scripts.chopped(1)).path()), problem);
}

/// A package whose contents cannot be read has failed to expand before, so that counts as unsigned.
bool isSignedPackage(const QString &package)
{
    const TransientFolder folder(QStringLiteral("pct-"));
    if (!folder.isValid())
        return false;
    const Result<bool> known = isSigned(package, folder.path());
    return known && *known;
}

/// The settings that are about to be added are for nobody else on this machine.
bool makePrivate(const QString &folder, QString *problem)
{
    if (const Result<> real = isRealFolder(folder); !real)
        return ended(real, problem);
    return QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner) ||
           fail(problem, QStringLiteral("%1: cannot be closed to other users").arg(folder));
}

/// Which script could have been adapted as it was inspected, and was not, with the cause; or empty.
QString lostScript(const ScriptsInspection &inspected, const ScriptsInspection &adapted)
{
    if (inspected.preinstallProblem.isEmpty() && !adapted.preinstallProblem.isEmpty())
        return QStringLiteral("preinstall: ") + adapted.preinstallProblem;
    if (inspected.postinstallProblem.isEmpty() && !adapted.postinstallProblem.isEmpty())
        return QStringLiteral("postinstall: ") + adapted.postinstallProblem;
    return {};
}

/// What the steps of one build share.
class Build
{
public:
    Build(const BuildPlan &plan, BuildReport &report);

    bool readSourceDate(QString *problem);
    bool checkPaths(QString *problem);
    bool clearWorkFolder(QString *problem);
    bool expand(QString *problem);
    bool inspect(QString *problem);
    bool collectSettings(QString *problem);
    bool addDocument(QString *problem);
    bool makeDefaultViewer(QString *problem);
    bool addIManageLogin(QString *problem);
    bool adaptScripts(QString *problem);
    bool limitTimes(QString *problem);
    bool flatten(QString *problem);
    bool removeLeftovers(QString *problem);

private:
    BuildPlan m_plan;
    BuildReport &m_report;
    BuildFiles m_files;
    std::shared_ptr<OutputFile> m_output;
    QString m_component;
    PackageInspection m_inspection;
    std::optional<qint64> m_sourceDate;
    std::optional<ReplacedDocument> m_replacedDocument;
    PackageSettings m_settings;
};

Build::Build(const BuildPlan &plan, BuildReport &report)
    : m_plan(plan)
    , m_report(report)
    , m_files{QFileInfo(plan.inputPackage).absoluteFilePath(),
              QFileInfo(plan.outputPackage).absoluteFilePath(),
              plan.documentPath.isEmpty() ? temporaryDocumentPath()
                                          : QFileInfo(plan.documentPath).absoluteFilePath()}
    , m_output(plan.output ? plan.output
                           : std::make_shared<OutputFile>(m_files.output, OutputFile::Existing::Replace))
    , m_component(plan.workFolder + QLatin1Char('/') + componentPackageName(plan.editor))
{
}

bool Build::readSourceDate(QString *problem)
{
    const Result<std::optional<qint64>> sourceDate = SourceDate::read();
    if (!sourceDate)
        return fail(problem, sourceDate.problem().text);
    m_sourceDate = *sourceDate;
    return true;
}

bool Build::checkPaths(QString *problem)
{
    return ended(checkFiles(m_files), problem) && ended(PathRules::quotable(m_plan.workFolder), problem);
}

bool Build::clearWorkFolder(QString *problem)
{
    return !m_plan.removesWorkFolder || ended(removeWorkFolder(m_plan.workFolder, m_files), problem);
}

bool Build::expand(QString *problem)
{
    QString cause;
    const bool expanded = CCommon::ExpandPkg(m_files.input, m_plan.workFolder, &cause);
    *problem = cause;
    return expanded && cause.isEmpty() && makePrivate(m_plan.workFolder, problem);
}

bool Build::inspect(QString *problem)
{
    qCDebug(logPackage).noquote() << QStringLiteral("qsUnPkgFile_pkg: ") + m_component;
    if (!checkComponent(m_component, m_plan.editor, problem))
        return false;
    m_inspection.signedByVendor =
        m_plan.isSignedByVendor ? *m_plan.isSignedByVendor : isSignedPackage(m_files.input);
    m_inspection.scripts = inspectScripts(scriptsFolder(m_component, m_plan.editor));
    m_report.productVersion = m_inspection.scripts.version;
    *problem = m_inspection.scripts.obstacle;
    return problem->isEmpty();
}

bool Build::collectSettings(QString *)
{
    if (m_plan.collectSettings)
        m_settings = m_plan.collectSettings();
    return true;
}

/// A kept document stays only when the whole build succeeds.
bool Build::addDocument(QString *problem)
{
    if (!m_plan.documentPath.isEmpty())
        *problem = m_replacedDocument.emplace(m_files.document).problem();
    if (!problem->isEmpty())
        return false;
    const bool isKept = m_plan.keepsDocument && !m_plan.documentPath.isEmpty();
    return CCommon::EditorXmlConfigfileToPkg(m_component, m_plan.editor, m_files.document,
                                             m_settings.document, problem,
                                             isKept ? SafeFile::Lasting::Yes : SafeFile::Lasting::No);
}

bool Build::makeDefaultViewer(QString *problem)
{
    return !m_settings.wantsDefaultViewer || CCommon::SetDefaultPDF(m_component, problem);
}

bool Build::addIManageLogin(QString *problem)
{
    return !m_settings.wantsIManageLogin ||
           CCommon::RegistryToPkg(QStringLiteral("iManage10/loginMethod"), QStringLiteral("UseOAuth2"),
                                  QStringLiteral("1"), m_component, m_plan.editor, problem);
}

/// A script that cannot be adapted is worth a warning, not the build.
bool Build::adaptScripts(QString *problem)
{
    ScriptsInspection &scripts = m_inspection.scripts;
    const ScriptsInspection inspected = scripts;
    scripts.preinstallProblem.clear();
    scripts.postinstallProblem.clear();
    CCommon::AdaptPreInstallForIntune(m_component, m_plan.editor, &scripts.preinstallProblem);
    CCommon::AdaptPostInstallForIntune(m_component, m_plan.editor, &scripts.postinstallProblem);
    m_report.warnings =
        warningsAbout(m_inspection, m_settings.wantsDefaultViewer, m_settings.wantsIManageLogin);
    if (m_plan.insistsOnScripts)
        *problem = lostScript(inspected, scripts);
    return problem->isEmpty();
}

/// In the folder rather than in the package: this holds for every command that flattens it.
bool Build::limitTimes(QString *problem)
{
    return !m_sourceDate || ended(SourceDate::limitTimesBelow(m_plan.workFolder, *m_sourceDate), problem);
}

/// The files are compared once more: what did not exist at the start may by now be one file under two names.
bool Build::flatten(QString *problem)
{
    if (!ended(flattenStaged(m_plan.workFolder, m_plan.editor, *m_output), problem) ||
        !ended(checkFilesDiffer(m_files), problem) || !ended(m_output->place(), problem))
        return false;
    if (m_replacedDocument)
        m_replacedDocument->forget();
    return true;
}

bool Build::removeLeftovers(QString *)
{
    if (!m_plan.removesWorkFolder)
        return true;
    if (const Result<> removed = removeWorkFolder(m_plan.workFolder, m_files); !removed) {
        qCDebug(logPackage) << "qsUnPkgFile remove fail!";
        m_report.warnings.append({QStringLiteral("work-folder-left"), removed.problem().line()});
    }
    return true;
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
    const auto step = [&build](const char *name, const char *failureLog, bool (Build::*run)(QString *)) {
        return BuildStep{QString::fromLatin1(name), QString::fromLatin1(failureLog),
                         [build, run](QString *problem) { return ((*build).*run)(problem); }};
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
        QString problem;
        if (step.run(&problem))
            continue;
        qCDebug(logPackage).noquote() << step.failureLog;
        report.failedStep = step.name;
        report.problem = problem;
        break;
    }
    return report;
}
