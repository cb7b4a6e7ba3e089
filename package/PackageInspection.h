// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

#include <QList>
#include <QString>

struct Product;

/// Something that a build does, or would do, without the effect that was asked for.
struct BuildWarning
{
    QString code; ///< stable, for programs: "document-switch-missing"
    QString text; ///< a sentence for people, without a file name
};

/// What a vendor package offers to a build, seen from its install scripts.
struct ScriptsInspection
{
    /// Why no build can work on them, as a clause: "its postinstall is a link". A build needs a postinstall
    /// that can be read and, if there is one, a preinstall, both regular files and no links. Empty when it
    /// can.
    QString obstacle;
    QString version;                 ///< product version that postinstall names, may be empty
    bool versionUnusable = false;    ///< it names one that no document can hold, which does not count
    bool customizedBefore = false;   ///< there is a "ProfStore.xml" already; a build would fail
    bool holdsViewerTool = false;    ///< there is a "duti" already; a build that adds one would fail
    QString preinstallProblem;       ///< why preinstall cannot be patched; empty when it can
    QString postinstallProblem;      ///< the same for postinstall
    bool preinstallPatched = false;  ///< it cannot be patched because it was before
    bool postinstallPatched = false; ///< the same for postinstall
    int documentSwitches = 0;        ///< lines of postinstall that hold "editorXmlFileCopy=0"
    int viewerSwitches = 0;          ///< lines that hold "setdefaultpdf=0"
    int preferenceLists = 0;         ///< lines that hold plistValue= and an opening double quote
};

/// What is known of a package file without touching its payload.
struct PackageInspection
{
    bool signedByVendor = false; ///< carries a signature, which a rebuilt package will not
    ScriptsInspection scripts;
};

/// Looks at the scripts in a folder of an expanded package (with or without a slash at the end). Never
/// follows links. Each script is read once, so that all that is said of it is said of the same text.
ScriptsInspection inspectScripts(const QString &scripts);

/// Whether a build can work on a package with these scripts, one that makes the product the default viewer or
/// not.
Result<> checkContents(const QString &package, const ScriptsInspection &scripts, bool makesDefaultViewer);

/// What will not work as asked for; empty when all will. The codes, in this order: "version-unusable",
/// "document-switch-missing", "viewer-switch-missing", "preference-list-missing", "preinstall-unpatched" and
/// "postinstall-unpatched", or "preinstall-patched-before" and "postinstall-patched-before" in their place;
/// the overload for a package begins with "signature-dropped".
QList<BuildWarning> warningsAbout(const ScriptsInspection &scripts, bool wantsDefaultViewer,
                                  bool wantsIManageLogin);
QList<BuildWarning> warningsAbout(const PackageInspection &package, bool wantsDefaultViewer,
                                  bool wantsIManageLogin);

/// Whether a flat package carries a signature; a problem when its table of contents cannot be read. The table
/// is written to a file in `privateFolder`. Blocks on external commands; any thread.
Result<bool> isSigned(const QString &package, const QString &privateFolder);

/// Unpacks only the product's Scripts member of a flat package into the existing folder `into`, as
/// "Scripts" there; its cost does not depend on the package's size. Returns the path of that folder. Blocks
/// on external commands; any thread.
Result<QString> extractScripts(const QString &package, const Product &product, const QString &into);

/// Everything `pct check` reports about the installer package of a product; `privateFolder` must exist, be
/// empty and belong to the caller. A problem when the package's contents cannot be read.
Result<PackageInspection> inspectPackage(const QString &package, const Product &product,
                                         const QString &privateFolder);
