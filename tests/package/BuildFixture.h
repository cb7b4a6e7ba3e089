// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "package/PackageBuild.h"
#include "tests/package/FakeTools.h"

#include <QTemporaryDir>

#include <memory>

/// A build that would succeed: fake commands, an input "in put.pkg", an output below "out" and a temporary
/// folder of its own, "tmp".
class BuildFixture
{
protected:
    void setUp();
    void tearDown();

    QString at(const char *name) const;
    QStringList entriesOf(const char *folder) const;

    /// Runs the build, keeps its report and tells whether it succeeded.
    bool builds();

    /// Replaces what pkgutil does to flatten into "$3".
    void flattenWith(const QByteArray &command);

    /// Lets pkgutil run a command in the expanded folder.
    void changeAfterExpansion(const QByteArray &command);

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<FakeTools> m_tools;
    BuildPlan m_plan;
    BuildReport m_report;

private:
    QByteArray m_temporaryFolder;
};
