// SPDX-License-Identifier: Apache-2.0
#include "package/verification/ReleaseComparison.h"

#include "config/EditorXmlData.h"
#include "config/Product.h"
#include "config/XmlTree.h"
#include "package/contents/PayloadPaths.h"

#include <QMap>
#include <QSet>

namespace {

void readDistribution(const QByteArray &xml, Release *release)
{
    const Result<QDomDocument> document = XmlTree::read(xml);
    if (!document)
        return;
    const QVector<QDomElement> found = XmlTree::firstNamed(
        document->documentElement(), {QStringLiteral("os-version"), QStringLiteral("options")});
    release->minimumSystem = found.at(0).attribute(QStringLiteral("min"));
    const QString architectures = found.at(1).attribute(QStringLiteral("hostArchitectures"));
    for (const QString &one : architectures.split(QLatin1Char(',')))
        release->architectures += one.trimmed().isEmpty() ? QStringList() : QStringList(one.trimmed());
}

Result<> readScriptsOf(const Product &product, Release *release)
{
    const QString path = product.componentPackage + QStringLiteral("/Scripts");
    const ContentsEntry *entry = release->table.find(path);
    if (!entry)
        return Problem{release->table.package, QStringLiteral("has no scripts of the ") + product.title};
    const Result<ScriptsMembers> members = readScripts(release->table, *entry);
    if (!members)
        return members.problem();
    release->scripts = *members;
    return {};
}

Result<> readPayload(Release *release)
{
    const Result<QStringList> paths = payloadPaths(release->table);
    if (!paths)
        return paths.problem();
    release->payload = *paths;
    return {};
}

/// What tells one state of an entry from another.
using States = QMap<QString, QString>;

States statesOf(const Release &release, const Product &product)
{
    States states;
    const QString scripts = product.componentPackage + QStringLiteral("/Scripts");
    for (const ContentsEntry &entry : release.table.entries) {
        if (entry.path != scripts)
            states.insert(entry.path, QStringLiteral("%1 %2 %3 %4 %5")
                                          .arg(entry.type, entry.target, QString::number(entry.size),
                                               QString::number(entry.mode.value_or(-1)),
                                               QString::fromLatin1(entry.checksum.digits)));
    }
    for (auto member = release.scripts.begin(); member != release.scripts.end(); ++member)
        states.insert(QStringLiteral("Scripts/") + member.key(),
                      QStringLiteral("%1 %2 %3")
                          .arg(member->type, QString::number(member->permissions),
                               QString::fromLatin1(member->sha256)));
    return states;
}

QSet<QString> fileNames(const QStringList &paths)
{
    QSet<QString> names;
    for (const QString &path : paths)
        names.insert(path.section(QLatin1Char('/'), -1));
    return names;
}

QList<LostSetting> pluginsLost(const Release &older, const Release &newer, const QString &plugins)
{
    QList<LostSetting> lost;
    if (!older.payload || !newer.payload)
        return lost;
    const QSet<QString> before = fileNames(*older.payload);
    const QSet<QString> after = fileNames(*newer.payload);
    for (const QString &plugin : plugins.split(QLatin1Char(';'))) {
        if (before.contains(plugin) && !after.contains(plugin))
            lost.append({QStringLiteral("strUnloadPluginArray"),
                         QStringLiteral("the plug-in %1 is no longer in the payload").arg(plugin)});
    }
    return lost;
}

} // namespace

Result<Release> Release::read(const QString &package, const Product &product, bool readsPayload,
                              const QString &privateFolder)
{
    const Result<TableOfContents> table = TableOfContents::read(package);
    if (!table)
        return table.problem();
    Release release;
    release.table = *table;
    if (const Result<> scripts = readScriptsOf(product, &release); !scripts)
        return scripts.problem();
    const Result<QString> folder = extractScripts(package, product, privateFolder);
    if (!folder)
        return Problem{package, folder.problem().line()};
    release.inspection = inspectScripts(*folder);
    if (const ContentsEntry *entry = release.table.find(QStringLiteral("Distribution"))) {
        if (const Result<QByteArray> xml = contentsOf(release.table, *entry))
            readDistribution(*xml, &release);
    }
    if (const Result<> payload = readsPayload ? readPayload(&release) : Result<>(); !payload)
        return payload.problem();
    return release;
}

ReleaseChanges changesBetween(const Release &older, const Release &newer, const Product &product)
{
    ReleaseChanges changes;
    const States before = statesOf(older, product);
    const States after = statesOf(newer, product);
    for (auto entry = before.begin(); entry != before.end(); ++entry) {
        if (!after.contains(entry.key()))
            changes.removed.append(entry.key());
        else if (after.value(entry.key()) != *entry)
            changes.changed.append(entry.key());
    }
    for (auto entry = after.begin(); entry != after.end(); ++entry) {
        if (!before.contains(entry.key()))
            changes.added.append(entry.key());
    }
    return changes;
}

QList<LostSetting> settingsLost(const Release &older, const Release &newer, const EditorXmlData &settings)
{
    QList<LostSetting> lost;
    const auto loseIf = [&lost](bool isLost, const char *name, const char *text) {
        if (isLost)
            lost.append({QString::fromLatin1(name), QString::fromLatin1(text)});
    };
    const auto isGone = [&](int ScriptsInspection::*switches) {
        return older.inspection.*switches > 0 && newer.inspection.*switches == 0;
    };
    loseIf(isGone(&ScriptsInspection::documentSwitches), "all settings",
           "postinstall no longer has a line with editorXmlFileCopy=0");
    loseIf(settings.bSetAsDefaultViewer && isGone(&ScriptsInspection::viewerSwitches), "bSetAsDefaultViewer",
           "postinstall no longer has a line with setdefaultpdf=0");
    loseIf(settings.bUseOAuth2 && isGone(&ScriptsInspection::preferenceLists), "bUseOAuth2",
           "postinstall no longer has a line with plistValue=\"");
    return lost + pluginsLost(older, newer, settings.strUnloadPluginArray);
}
