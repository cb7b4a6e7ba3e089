// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/FileWarning.h"
#include "cli/PrivateFolder.h"
#include "cli/SignatureCheck.h"
#include "cli/SigningOptions.h"
#include "config/EditorXmlData.h"
#include "core/Result.h"

#include <QList>
#include <QString>

#include <memory>
#include <optional>

struct BuildPlan;
struct ProvenanceFacts;
struct Product;
class OutputFile;
class SharedExpansion;

/// What `pct build` was asked for. All paths are absolute; those that were not given are empty.
struct PackageRequest
{
    const Product *product = nullptr;
    QString input;
    QString output;
    QString config; ///< document to take the settings from; without one they are the defaults
    std::optional<EditorXmlData> settings; ///< instead of a document
    SharedExpansion *expansion = nullptr;  ///< of the input, when builds share one; the caller's
    QString provenance;                    ///< where it is stated of what the package was made, or empty
    QString keptDocument;                  ///< where the document that the package carries is kept
    bool verifies = false;                 ///< the new package is judged before it takes its place
    bool force = false;                    ///< replace an existing output and kept document
    SignatureDemands demands;              ///< of the vendor's signature
    PackageSigning signing;                ///< of the new package
};

/// One build of a customized package without a window. Whatever happens, the
/// output and the kept document are complete or as they were, and nothing else is left behind.
class PackageJob
{
public:
    explicit PackageJob(const PackageRequest &request);

    /// Blocks until the build has ended; nothing when it succeeded. Called once.
    Result<> run();

    const QList<FileWarning> &warnings() const;
    QString productVersion() const; ///< after a successful run; may be empty

private:
    // The stages of a run, in their order.
    Result<> checkPaths();
    Result<> takeSettings();
    Result<> checkInput();
    Result<> checkSignature();
    Result<> build();
    Result<> sign();
    Result<> keepDocument();
    Result<> stateProvenance();

    BuildPlan plan() const;
    Result<> useExpansion(BuildPlan &plan) const;
    Result<> verify(const QString &package) const;
    Result<ProvenanceFacts> provenanceFacts() const;

    PackageRequest m_request;
    EditorXmlData m_settings;
    // Held from the start: what their paths lead to by the end is another question.
    std::shared_ptr<OutputFile> m_output;
    std::shared_ptr<OutputFile> m_built; ///< what is signed into the output, or the output itself
    std::shared_ptr<OutputFile> m_keptDocument;
    std::shared_ptr<OutputFile> m_provenance;
    PrivateFolder m_folder;
    std::optional<bool> m_isSignedByVendor;
    QString m_document; ///< where the build writes the document
    QList<FileWarning> m_warnings;
    QString m_productVersion;
};
