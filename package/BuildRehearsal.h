// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "package/PackageBuild.h"

#include <QByteArray>

/// An install script before and after a build.
struct ScriptChange
{
    QString name;
    QByteArray before;
    QByteArray after;
};

/// What a build makes of a package, without the package.
struct BuildRehearsal
{
    ScriptsInspection scripts;    ///< of the vendor's package
    QList<ScriptChange> changes;  ///< preinstall, where there is one, and postinstall
    QByteArray document;          ///< "ProfStore.xml", as it would be added
    bool addsViewerTool = false;  ///< "duti" would be added
    QList<BuildWarning> warnings; ///< as the build would give them
};

/// Does on a copy of the package's install scripts what a build does on them, by the same functions. A
/// problem when no build could work, as BuildReport has it. The folder must exist, be empty and belong to the
/// caller. Its time does not depend on the package's size. Blocks on external commands; any thread.
Result<BuildRehearsal> rehearseBuild(const QString &package, const Product &product,
                                     const PackageSettings &settings, const QString &privateFolder);
