// SPDX-License-Identifier: Apache-2.0
#include "cli/PackageJob.h"

#include "cli/Installer.h"
#include "cli/PathRules.h"
#include "cli/Product.h"
#include "cli/SettingsFile.h"
#include "config/ProductSettings.h"
#include "core/OutputFile.h"
#include "core/SafeFile.h"
#include "package/PackageBuild.h"

#include <QFileInfo>

namespace {

std::shared_ptr<OutputFile> heldPlace(const QString &path, bool force)
{
    if (path.isEmpty())
        return nullptr;
    const auto existing = force ? OutputFile::Existing::Replace : OutputFile::Existing::Keep;
    return std::make_shared<OutputFile>(path, existing);
}

} // namespace

PackageJob::PackageJob(const PackageRequest &request)
    : m_request(request)
    , m_output(heldPlace(request.output, request.force))
    , m_keptDocument(heldPlace(request.keptDocument, request.force))
{
}

Verdict PackageJob::run()
{
    using Stage = Verdict (PackageJob::*)();
    for (const Stage stage : {&PackageJob::checkPaths, &PackageJob::readSettings, &PackageJob::checkInput,
                              &PackageJob::build, &PackageJob::keepDocument}) {
        if (Verdict problem = (this->*stage)())
            return problem;
    }
    return std::nullopt;
}

const QList<FileWarning> &PackageJob::warnings() const
{
    return m_warnings;
}

QString PackageJob::productVersion() const
{
    return m_productVersion;
}

Verdict PackageJob::checkPaths()
{
    Verdict problem = unquotable({m_request.input, m_request.output});
    if (!problem)
        problem = sharedFile({{QStringLiteral("input"), m_request.input},
                              {QStringLiteral("configuration"), m_request.config},
                              {QStringLiteral("output"), m_request.output},
                              {QStringLiteral("kept document"), m_request.keptDocument}});
    if (!problem)
        problem = unwritable(m_request.output, m_request.force);
    if (!problem && !m_request.keptDocument.isEmpty())
        problem = unwritable(m_request.keptDocument, m_request.force);
    return problem;
}

Verdict PackageJob::readSettings()
{
    SettingsFile file;
    if (!m_request.config.isEmpty()) {
        if (Verdict problem = readDocument(m_request.config, file))
            return problem;
        m_warnings += file.warnings;
        if (file.product != m_request.product)
            m_warnings.append(otherProductWarning(m_request.config, *file.product, *m_request.product));
    }
    theEditorXmlData = settingsForProduct(file.settings, m_request.product->editor);
    return std::nullopt;
}

Verdict PackageJob::checkInput()
{
    if (Verdict problem = m_folder.problem())
        return problem;
    const QString folder = m_folder.makeSubfolder(QStringLiteral("inspect"));
    const InstallerCheck check =
        checkInstaller(m_request.input, *m_request.product, folder, theEditorXmlData.bSetAsDefaultViewer);
    if (check.inspection)
        m_isSignedByVendor = check.inspection->signedByVendor;
    return check.refusal;
}

Verdict PackageJob::build()
{
    m_document = m_folder.makeSubfolder(QStringLiteral("document")) + QStringLiteral("/ProfStore.xml");
    const BuildReport report = buildPackage(plan());
    for (const BuildWarning &warning : report.warnings)
        m_warnings.append({m_request.input, warning});
    m_productVersion = report.productVersion;
    if (report.succeeded())
        return std::nullopt;
    if (m_output->isTaken())
        return Problem{m_request.output,
                       QStringLiteral("exists already, since this run began; use --force to replace it")};
    return Problem{
        m_request.input,
        QStringLiteral("cannot %1: %2; no package was made").arg(report.failedStep, report.problem)};
}

BuildPlan PackageJob::plan() const
{
    BuildPlan plan;
    plan.inputPackage = m_request.input;
    plan.outputPackage = m_request.output;
    plan.output = m_output;
    plan.documentPath = m_document;
    plan.keepsDocument = false;
    plan.isSignedByVendor = m_isSignedByVendor;
    plan.workFolder = m_folder.makeSubfolder(QStringLiteral("work")) + QLatin1Char('/') +
                      QFileInfo(m_request.input).fileName();
    plan.removesWorkFolder = false;
    plan.insistsOnScripts = true;
    plan.editor = m_request.product->editor;
    plan.collectSettings = [] {};
    plan.wantsDefaultViewer = [] { return theEditorXmlData.bSetAsDefaultViewer; };
    plan.wantsIManageLogin = [editor = plan.editor] { return editor && theEditorXmlData.bUseOAuth2; };
    return plan;
}

Verdict PackageJob::keepDocument()
{
    if (m_request.keptDocument.isEmpty())
        return std::nullopt;
    QByteArray document;
    QString error;
    if (SafeFile::readContents(m_document, document, &error) && m_keptDocument->write(document, &error))
        return std::nullopt;
    if (m_keptDocument->isTaken())
        error += QStringLiteral("; use --force to replace it");
    return Problem{
        m_request.keptDocument,
        QStringLiteral("the document cannot be kept (%1); the package was made all the same, as %2")
            .arg(error, m_request.output)};
}
