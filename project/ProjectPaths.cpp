// SPDX-License-Identifier: Apache-2.0
#include "project/ProjectPaths.h"

#include "core/PrintableText.h"
#include "core/SafeFile.h"
#include "project/Project.h"

#include <QDir>

namespace {

using Kind = SafeFile::Kind;

/// The folders on the way, each with those above it, and the file last.
QStringList stepsTo(const QString &relativePath)
{
    QStringList steps;
    for (const QString &name : relativePath.split(QLatin1Char('/')))
        steps += steps.isEmpty() ? name : steps.last() + QLatin1Char('/') + name;
    return steps;
}

bool isName(const QString &name)
{
    constexpr int longest = 255;
    return !name.isEmpty() && !name.startsWith(QLatin1Char('.')) && name.toUtf8().size() <= longest &&
           visibleText(name) == name && !name.contains(QLatin1Char('\\')) && !name.contains(QLatin1Char('"'));
}

Problem isLink(const QString &path)
{
    return {{}, QStringLiteral("\"%1\" is a link; a project takes only what lies in its folder").arg(path)};
}

} // namespace

QString ProjectPaths::usualName(const ProjectOutput &output)
{
    const QMap<QString, QString> endings = {{QStringLiteral("document"), QStringLiteral(".xml")},
                                            {QStringLiteral("profile"), QStringLiteral(".mobileconfig")},
                                            {QStringLiteral("plist"), QStringLiteral(".plist")},
                                            {QStringLiteral("package"), QStringLiteral(".pkg")},
                                            {QStringLiteral("pkginfo"), QStringLiteral(".pkginfo")},
                                            {QStringLiteral("report"), QStringLiteral("-report.html")}};
    const QString format = output.option(QLatin1String("format"));
    if (format == QLatin1String("markdown"))
        return QStringLiteral("${variant}-report.md");
    if (format == QLatin1String("json"))
        return QStringLiteral("${variant}-report.json");
    return QStringLiteral("${variant}") + endings.value(output.kind);
}

Result<> ProjectPaths::checkInput(const QString &folder, const QString &path)
{
    for (const QString &step : stepsTo(path.mid(folder.size() + 1))) {
        if (SafeFile::kindOf(folder + QLatin1Char('/') + step) == Kind::Link)
            return isLink(step);
    }
    return {};
}

Result<> ProjectPaths::checkOutput(const QString &folder, const QString &relativePath)
{
    const QStringList steps = stepsTo(relativePath);
    for (const QString &step : steps) {
        if (!isName(step.section(QLatin1Char('/'), -1)))
            return Problem{{},
                           QStringLiteral("\"%1\" is no name for an output").arg(printableStart(step, 64))};
        const Kind kind = SafeFile::kindOf(folder + QLatin1Char('/') + step);
        const Kind wanted = step == steps.last() ? Kind::File : Kind::Folder;
        if (kind == Kind::Link)
            return isLink(step);
        if (kind != Kind::Missing && kind != wanted)
            return Problem{{}, QStringLiteral("\"%1\" is in the way; move it").arg(step)};
    }
    return {};
}

Result<> ProjectPaths::makeFolders(const QString &folder, const QString &relativePath)
{
    const QString relativeFolder = relativePath.section(QLatin1Char('/'), 0, -2);
    if (QDir(folder).mkpath(relativeFolder))
        return {};
    return Problem{{}, QStringLiteral("the folder \"%1\" cannot be made").arg(relativeFolder)};
}
