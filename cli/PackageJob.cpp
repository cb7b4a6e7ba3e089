// SPDX-License-Identifier: Apache-2.0
#include "cli/PackageJob.h"

#include "cli/InputFile.h"
#include "cli/Installer.h"
#include "cli/ResultCheck.h"
#include "cli/SettingsFile.h"
#include "config/Product.h"
#include "config/ProductSettings.h"
#include "core/OutputFile.h"
#include "core/PathRules.h"
#include "core/SafeFile.h"
#include "core/Version.h"
#include "package/PackageBuild.h"
#include "package/SharedExpansion.h"
#include "package/SourceDate.h"
#include "package/verification/Provenance.h"

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
    , m_provenance(heldPlace(request.provenance, request.force))
{
}

Result<> PackageJob::run()
{
    using Stage = Result<> (PackageJob::*)();
    for (const Stage stage : {&PackageJob::checkPaths, &PackageJob::takeSettings, &PackageJob::checkInput,
                              &PackageJob::checkSignature, &PackageJob::build, &PackageJob::sign,
                              &PackageJob::keepDocument, &PackageJob::stateProvenance}) {
        if (Result<> done = (this->*stage)(); !done)
            return done;
    }
    return {};
}

const QList<FileWarning> &PackageJob::warnings() const
{
    return m_warnings;
}

QString PackageJob::productVersion() const
{
    return m_productVersion;
}

Result<> PackageJob::checkPaths()
{
    for (const QString &path : {m_request.input, m_request.output}) {
        if (Result<> quotable = PathRules::quotable(path); !quotable)
            return quotable;
    }
    if (Result<> different = PathRules::allDiffer({{QStringLiteral("input"), m_request.input},
                                                   {QStringLiteral("configuration"), m_request.config},
                                                   {QStringLiteral("output"), m_request.output},
                                                   {QStringLiteral("kept document"), m_request.keptDocument},
                                                   {QStringLiteral("statement"), m_request.provenance}});
        !different)
        return different;
    if (Result<> signable = m_request.signing.identity.isEmpty() ? Result<>() : canSignPackages(); !signable)
        return signable;
    for (const QString &path : {m_request.output, m_request.keptDocument, m_request.provenance}) {
        if (Result<> writable = path.isEmpty() ? Result<>() : checkWritable(path, m_request.force); !writable)
            return writable;
    }
    return {};
}

Result<> PackageJob::takeSettings()
{
    EditorXmlData settings = m_request.settings.value_or(EditorXmlData());
    if (!m_request.config.isEmpty()) {
        const Result<SettingsFile> file = readDocument(*m_request.product, m_request.config);
        if (!file)
            return file.problem();
        m_warnings += file->warnings;
        settings = file->settings;
    }
    m_settings = settingsForProduct(settings, *m_request.product);
    return {};
}

Result<> PackageJob::checkInput()
{
    if (Result<> usable = m_folder.check(); !usable)
        return usable;
    const QString folder = m_folder.makeSubfolder(QStringLiteral("inspect"));
    const InstallerCheck check =
        checkInstaller(m_request.input, *m_request.product, folder, m_settings.bSetAsDefaultViewer);
    if (check.inspection)
        m_isSignedByVendor = check.inspection->signedByVendor;
    return check.verdict;
}

Result<> PackageJob::checkSignature()
{
    const Result<SignatureReport> report = signatureOf(m_request.input, m_request.demands);
    if (!report)
        return report.problem();
    for (const BuildWarning &warning : signatureWarnings(*report))
        m_warnings.append({m_request.input, warning});
    return meets(m_request.input, *report, m_request.demands);
}

Result<> PackageJob::build()
{
    const QString name = QFileInfo(m_request.output).fileName();
    m_built =
        m_request.signing.identity.isEmpty()
            ? m_output
            : heldPlace(m_folder.makeSubfolder(QStringLiteral("unsigned")) + QLatin1Char('/') + name, false);
    m_document = m_folder.makeSubfolder(QStringLiteral("document")) + QStringLiteral("/ProfStore.xml");
    BuildPlan wanted = plan();
    if (Result<> expanded = useExpansion(wanted); !expanded)
        return expanded;
    const BuildReport report = buildPackage(wanted);
    for (const BuildWarning &warning : report.warnings)
        m_warnings.append({m_request.input, warning});
    m_productVersion = report.productVersion;
    if (report.succeeded())
        return {};
    if (m_output->isTaken())
        return Problem{m_request.output,
                       QStringLiteral("exists already, since this run began") + forceAdvice()};
    return Problem{
        m_request.input,
        QStringLiteral("cannot %1: %2; no package was made").arg(report.failedStep, report.problem)};
}

BuildPlan PackageJob::plan() const
{
    BuildPlan plan;
    plan.inputPackage = m_request.input;
    plan.outputPackage = m_built->path();
    plan.output = m_built;
    plan.documentPath = m_document;
    plan.keepsDocument = false;
    plan.isSignedByVendor = m_isSignedByVendor;
    plan.workFolder = m_folder.makeSubfolder(QStringLiteral("work")) + QLatin1Char('/') +
                      QFileInfo(m_request.input).fileName();
    plan.removesWorkFolder = false;
    plan.insistsOnScripts = true;
    plan.product = m_request.product;
    if (m_request.verifies)
        plan.judge = [this](const QString &package) { return verify(package); };
    plan.collectSettings = [this] {
        return PackageSettings{m_settings, m_settings.bSetAsDefaultViewer,
                               m_request.product->isEditor() && m_settings.bUseOAuth2};
    };
    return plan;
}

Result<> PackageJob::useExpansion(BuildPlan &plan) const
{
    if (!m_request.expansion)
        return {};
    const Result<QString> folder = m_request.expansion->fresh(m_request.input, *m_request.product);
    if (!folder)
        return Problem{m_request.input,
                       QStringLiteral("cannot be expanded: %1").arg(folder.problem().text)};
    plan.workFolder = *folder;
    plan.isExpanded = true;
    return {};
}

Result<> PackageJob::verify(const QString &package) const
{
    VerificationRequest request;
    request.result = package;
    request.vendor = m_request.input;
    request.product = m_request.product;
    request.settings = m_settings;
    const Result<> verdict = checkResult(request).verdict;
    return verdict ? verdict : Problem{{}, QStringLiteral("the new package ") + verdict.problem().text};
}

Result<> PackageJob::sign()
{
    if (m_request.signing.identity.isEmpty())
        return {};
    const Result<QStringList> made = signPackage(m_built->path(), m_request.signing, m_output.get());
    if (!made)
        return Problem{m_request.output, made.problem().text + QStringLiteral("; no package was made")};
    m_warnings += signingWarnings(*made);
    return {};
}

Result<> PackageJob::keepDocument()
{
    if (m_request.keptDocument.isEmpty())
        return {};
    const Result<QByteArray> document = SafeFile::readContents(m_document);
    const Result<> kept = document ? m_keptDocument->write(*document) : document.problem();
    if (kept)
        return {};
    const QString advice = m_keptDocument->isTaken() ? forceAdvice() : QString();
    return Problem{
        m_request.keptDocument,
        QStringLiteral("the document cannot be kept (%1); the package was made all the same, as %2")
            .arg(kept.problem().text + advice, m_request.output)};
}

Result<> PackageJob::stateProvenance()
{
    if (m_request.provenance.isEmpty())
        return {};
    const Result<ProvenanceFacts> facts = provenanceFacts();
    const Result<> stated =
        facts ? m_provenance->write(provenanceStatement(*facts)) : Result<>(facts.problem());
    if (stated)
        return {};
    const QString advice = m_provenance->isTaken() ? forceAdvice() : QString();
    return Problem{
        m_request.provenance,
        QStringLiteral("the statement cannot be written (%1); the package was made all the same, as %2")
            .arg(stated.problem().text + advice, m_request.output)};
}

Result<ProvenanceFacts> PackageJob::provenanceFacts() const
{
    ProvenanceFacts facts;
    facts.product = m_request.product->word;
    facts.toolVersion = QString::fromLatin1(toolVersion);
    if (const Result<std::optional<qint64>> sourceDate = SourceDate::read(); sourceDate)
        facts.sourceDate = *sourceDate;
    const QList<QPair<StatedFile *, QString>> files{{&facts.package, m_request.output},
                                                    {&facts.vendor, m_request.input},
                                                    {&facts.settings, m_request.config},
                                                    {&facts.document, m_document}};
    for (const auto &[file, path] : files) {
        const Result<StatedFile> stated = statedFile(path);
        if (!stated)
            return stated.problem();
        *file = *stated;
    }
    return facts;
}
