// SPDX-License-Identifier: Apache-2.0
#include "package/BuildRehearsal.h"

#include "core/SafeFile.h"
#include "package/ExpandedPackage.h"

#include <algorithm>

namespace {

QString textOf(const Result<> &result)
{
    return result ? QString() : result.problem().text;
}

class Rehearsal
{
public:
    Rehearsal(const Product &product, const PackageSettings &settings, const QString &folder)
        : m_product(product)
        , m_settings(settings)
        , m_folder(folder)
    {
    }

    Result<> run(const QString &package);
    BuildRehearsal result() const { return m_result; }

private:
    Result<> inspect(const QString &package);
    Result<> readScripts(QByteArray ScriptChange::*moment);
    Result<> customize();
    Result<> readDocument();

    const Product &m_product;
    const PackageSettings &m_settings;
    QString m_folder;
    PackageInspection m_inspection;
    BuildRehearsal m_result;
};

Result<> Rehearsal::run(const QString &package)
{
    if (Result<> inspected = inspect(package); !inspected)
        return inspected;
    if (Result<> before = readScripts(&ScriptChange::before); !before)
        return before;
    if (Result<> customized = customize(); !customized)
        return customized;
    if (Result<> after = readScripts(&ScriptChange::after); !after)
        return after;
    return readDocument();
}

Result<> Rehearsal::inspect(const QString &package)
{
    const Result<PackageInspection> inspection = inspectPackage(package, m_product, m_folder);
    if (!inspection)
        return inspection.problem();
    m_inspection = *inspection;
    m_result.scripts = inspection->scripts;
    const QString &obstacle = inspection->scripts.obstacle;
    if (!obstacle.isEmpty())
        return Problem{{}, obstacle};
    for (const char *name : {"preinstall", "postinstall"}) {
        const QString script = QString::fromLatin1(name);
        if (SafeFile::kindOf(m_folder + QStringLiteral("/Scripts/") + script) != SafeFile::Kind::Missing)
            m_result.changes.append({script, {}, {}});
    }
    return {};
}

Result<> Rehearsal::readScripts(QByteArray ScriptChange::*moment)
{
    for (ScriptChange &change : m_result.changes) {
        const Result<QByteArray> bytes =
            SafeFile::readContents(m_folder + QStringLiteral("/Scripts/") + change.name);
        if (!bytes)
            return bytes.problem();
        change.*moment = *bytes;
    }
    return {};
}

/// In the order of a build's steps.
Result<> Rehearsal::customize()
{
    const QString document = m_folder + QStringLiteral("/ProfStore.xml");
    if (Result<> added = ExpandedPackage::addSettings(m_folder, m_product, m_settings.document, document,
                                                      SafeFile::Lasting::No);
        !added)
        return added;
    m_result.addsViewerTool = m_settings.wantsDefaultViewer;
    if (Result<> made =
            m_settings.wantsDefaultViewer ? ExpandedPackage::makeDefaultViewer(m_folder) : Result<>();
        !made)
        return made;
    if (Result<> added =
            m_settings.wantsIManageLogin ? ExpandedPackage::addIManageLogin(m_folder, m_product) : Result<>();
        !added)
        return added;
    ScriptsInspection &scripts = m_inspection.scripts;
    scripts.preinstallProblem = textOf(ExpandedPackage::adaptPreinstall(m_folder, m_product));
    scripts.postinstallProblem = textOf(ExpandedPackage::adaptPostinstall(m_folder, m_product));
    m_result.warnings =
        warningsAbout(m_inspection, m_settings.wantsDefaultViewer, m_settings.wantsIManageLogin);
    return {};
}

Result<> Rehearsal::readDocument()
{
    const Result<QByteArray> document =
        SafeFile::readContents(m_folder + QStringLiteral("/Scripts/ProfStore.xml"));
    if (!document)
        return document.problem();
    m_result.document = *document;
    return {};
}

} // namespace

Result<BuildRehearsal> rehearseBuild(const QString &package, const Product &product,
                                     const PackageSettings &settings, const QString &privateFolder)
{
    Rehearsal rehearsal(product, settings, privateFolder);
    if (const Result<> done = rehearsal.run(package); !done)
        return done.problem();
    return rehearsal.result();
}
