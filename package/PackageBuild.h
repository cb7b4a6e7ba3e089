// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/EditorXmlData.h"
#include "config/Product.h"
#include "package/PackageInspection.h"

#include <QList>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class OutputFile;

/// What a package is customized with.
struct PackageSettings
{
    EditorXmlData document;
    bool wantsDefaultViewer = false; ///< make the product the default PDF viewer
    bool wantsIManageLogin = false;  ///< add the iManage sign-in entry
};

/// One build of a customized package, as the window and the command line ask for it.
struct BuildPlan
{
    QString inputPackage;
    QString outputPackage;
    /// The place of the output when the caller holds it already. Null lets the build hold it from its start
    /// and replace a file there.
    std::shared_ptr<OutputFile> output;
    QString documentPath;          ///< where the configuration document is kept; empty = temporary folder
    bool keepsDocument = true;     ///< false when what lies at documentPath is needed by this run only
    bool isExpanded = false;       ///< the work folder holds the expanded package already
    QString workFolder;            ///< where the package is expanded; a folder left there is removed first
    bool removesWorkFolder = true; ///< false when the caller made the place for it and removes that
    /// Whether a script that could be adapted when it was inspected must be: it can only be the machine that
    /// fails then.
    bool insistsOnScripts = false;
    /// Whether the input carries a signature, when the caller has looked.
    std::optional<bool> isSignedByVendor;
    const Product *product = &Product::editor();

    /// Judges the complete package before it takes its place, when it is set; a problem keeps it from there.
    std::function<Result<>(const QString &package)> judge;

    /// Called once, after the package has been expanded; without it the package gets the defaults.
    std::function<PackageSettings()> collectSettings;
};

/// How a build ended.
struct BuildReport
{
    QString failedStep;           ///< empty when the build succeeded
    QString problem;              ///< one line: why the step failed
    QList<BuildWarning> warnings; ///< warningsAbout the package, and "work-folder-left"
    QString productVersion;       ///< version named by the package's postinstall, may be empty

    bool succeeded() const { return failedStep.isEmpty(); }
};

/// One step of a build.
struct BuildStep
{
    QString name;       ///< for people: "expand the package"
    QString failureLog; ///< debug line when the step fails
    std::function<Result<>()> run;
};

/// Work folder of the window's builds: the temporary folder and the file name of the input package.
QString defaultWorkFolder(const QString &inputPackage);

/// The steps of a build in their order. `report` collects warnings and must outlive the steps.
std::vector<BuildStep> buildSteps(const BuildPlan &plan, BuildReport &report);

/// Runs the steps up to the first that fails. Blocks on external commands; any thread. The output appears
/// under its name only when it is complete; the input, and on failure an existing output and an existing file
/// at `documentPath`, are as they were. Only a real folder at `workFolder` is ever removed; what it holds is
/// for its user only. After a failure the work folder is left. Builds that run at the same time need work
/// folders and documents of their own. SOURCE_DATE_EPOCH limits the times in the output, see SourceDate.
BuildReport buildPackage(const BuildPlan &plan);
