// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/EditorXmlData.h"
#include "package/verification/EntryComparison.h"

#include <optional>

struct Product;

/// A customized package and all that it is judged by.
struct VerificationRequest
{
    QString result; ///< path of the package
    QString vendor; ///< path of the package that it was made of
    const Product *product = nullptr;
    std::optional<EditorXmlData> settings; ///< that it should carry; those in it when there are none
    QString viewerTool;                    ///< path of another "duti" that it may carry, or empty
    Depth depth = Depth::Shallow;
};

/// What came of it.
struct ResultVerification
{
    Deviations findings; ///< empty when the result is what a build makes of the vendor's package
    int entries = 0;   ///< that were compared
    int members = 0;   ///< of archives of install scripts
};

/// Judges a result from the two packages alone. In what no build changes they must be equal, see
/// compareEntries(); the install scripts of the product must be what a build makes of the vendor's with the
/// settings in the result, which are tried again, and all other scripts the vendor's. Beyond the codes of the
/// comparisons: "scripts-unreadable", "scripts-missing", "no-build", "document-missing",
/// "document-unreadable", "document-product", "document-version", "document-lint", "document-setting",
/// "viewer-tool", "script-syntax". A problem when a package cannot be read at all. The folder must be empty
/// and belong to the caller. Blocks on external commands; any thread.
Result<ResultVerification> verifyResult(const VerificationRequest &request, const QString &privateFolder);
