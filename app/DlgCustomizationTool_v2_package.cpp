// SPDX-License-Identifier: Apache-2.0
#include "app/DlgCustomizationTool_v2.h"

#include "app/BuildThread.h"
#include "app/CPDF_Waiting.h"
#include "app/FlowMessages.h"
#include "app/SaveDialogWithOption.h"
#include "config/CCommon.h"
#include "config/Product.h"
#include "core/Logging.h"
#include "package/PackageBuild.h"
#include "profile/CProfileGenerator.h"
#include "ui_DlgCustomizationTool_v2.h"

#include <QDir>

#include <utility>

namespace {

QString proposedOutput(const QString &inputPackage)
{
    const QString suffix = QStringLiteral(".pkg");
    if (!inputPackage.endsWith(suffix))
        return inputPackage;
    QString proposed = inputPackage;
    return proposed.insert(inputPackage.size() - suffix.size(), QStringLiteral("_Untitled"));
}

void logReport(const BuildReport &report)
{
    for (const BuildWarning &warning : report.warnings)
        qCWarning(logApp).noquote() << warning.text;
    if (!report.succeeded())
        qCWarning(logApp).noquote() << "Failed to" << report.failedStep + QLatin1Char(':') << report.problem;
}

} // namespace

void DlgCustomizationTool_v2::On_SavePackage()
{
    if (!CCommon::CheckPkg(m_packagePath, m_product.isEditor())) {
        FlowMessages::critical(this, tr("The input installer package is invalid."));
        qCDebug(logApp, "CheckPkg fail!");
        return;
    }
    SaveDialogWithOption dialog(this, proposedOutput(m_packagePath), tr("Package files (*.pkg)"));
    dialog.setDefaultSuffix(QStringLiteral("pkg"));
    dialog.setOptionText(tr("Save config file for future modification"));
    dialog.setOptionEnabled(true);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const QStringList chosen = dialog.selectedFiles();
    if (chosen.size() != 1 || chosen.first().isEmpty())
        return;
    CProfileGenerator::SyncLastOpenDirectory(chosen.first());
    startBuild(chosen.first(), dialog.isOptionChecked() ? askDocumentPath(chosen.first()) : QString());
}

QString DlgCustomizationTool_v2::askDocumentName(const QString &proposed)
{
    const QString chosen = QFileDialog::getSaveFileName(this, QString(), proposed, tr("xml files (*.xml)"));
    if (chosen.isEmpty() || !QFileInfo(chosen).suffix().isEmpty())
        return chosen;
    const QString named = chosen + QStringLiteral(".xml");
    // Nobody has been asked yet whether to replace that one.
    return QFileInfo::exists(named) ? askDocumentName(named) : named;
}

QString DlgCustomizationTool_v2::askDocumentPath(const QString &outputPackage)
{
    const QString path = QFileInfo(outputPackage).dir().filePath(QStringLiteral("ProfStore.xml"));
    qCDebug(logApp).noquote() << "[debug]==== qsXmlPath :" << path;
    if (!QFileInfo::exists(path))
        return path;
    const QString chosen = askDocumentName(path);
    if (!chosen.isEmpty())
        CProfileGenerator::SyncLastOpenDirectory(chosen);
    return chosen;
}

void DlgCustomizationTool_v2::startBuild(const QString &outputPackage, const QString &documentPath)
{
    const auto build = [this, input = m_packagePath, outputPackage, documentPath] {
        Process(this, input, outputPackage, documentPath);
    };
    runInWorker(build, [this, outputPackage, documentKept = !documentPath.isEmpty()] {
        showBuildResult(outputPackage, documentKept);
    });
}

/// The result of a worker that has been replaced meanwhile is not shown.
void DlgCustomizationTool_v2::runInWorker(const std::function<void()> &work,
                                          const std::function<void()> &showResult)
{
    setEnabled(false);
    m_waiting->start();

    // Deleted only after the new thread exists, so that the two never share an address.
    const std::unique_ptr<QThread> previous(m_worker.data());
    if (previous && previous->isRunning()) {
        previous->terminate();
        previous->wait();
    }
    QThread *worker = new BuildThread(work);
    m_worker = worker;
    const auto finished = [this, worker, showResult] {
        if (worker != m_worker)
            return;
        m_waiting->stop();
        setEnabled(true);
        returnFocus();
        showResult();
        closeIfAsked();
    };
    connect(worker, &QThread::finished, this, finished, Qt::QueuedConnection);
    worker->start(QThread::InheritPriority);
}

/// A result may have begun further work, such as signing.
void DlgCustomizationTool_v2::closeIfAsked()
{
    if (isBuilding() || !std::exchange(m_closesAfterBuild, false))
        return;
    close();
}

BuildPlan DlgCustomizationTool_v2::planOf(const QString &inputPackage, const QString &outputPackage,
                                          const QString &documentPath)
{
    BuildPlan plan;
    plan.inputPackage = inputPackage;
    plan.outputPackage = outputPackage;
    plan.documentPath = documentPath;
    plan.workFolder = defaultWorkFolder(inputPackage);
    plan.product = &m_product;
    plan.collectSettings = [this] {
        ReloadEditorXmlData();
        return PackageSettings{*m_pEditorXmlData, GetBoolProperty(QStringLiteral("cb_defaultpdf")),
                               GetBoolProperty(QStringLiteral("cb_biManageLogin"))};
    };
    return plan;
}

void DlgCustomizationTool_v2::Process(DlgCustomizationTool_v2 *window, QString inputPackage,
                                      QString outputPackage, const QString &documentPath)
{
    window->m_nBuildStatus = 1;
    const BuildReport report = buildPackage(window->planOf(inputPackage, outputPackage, documentPath));
    logReport(report);
    if (report.succeeded())
        window->m_nBuildStatus = 0;
}

void DlgCustomizationTool_v2::showBuildResult(const QString &outputPackage, bool documentKept)
{
    if (m_nBuildStatus != 0) {
        m_closesAfterBuild = false;
        FlowMessages::warning(this, tr("Failed to create package. Please try again."));
        return;
    }
    const QString text = documentKept
                             ? tr("The output package and configure file have been created successfully.")
                             : tr("The output package has been created successfully.");
    tellSaved(outputPackage);
    FlowMessages::information(this, text);
    offerPackageSigning(outputPackage);
}
