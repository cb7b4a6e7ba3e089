// SPDX-License-Identifier: Apache-2.0
#include "cli/ProjectOutputs.h"

#include "cli/PackageJob.h"
#include "cli/ProfileJob.h"
#include "config/ConfigDocument.h"
#include "config/Product.h"
#include "config/ProductSettings.h"
#include "core/SafeFile.h"
#include "package/MunkiItem.h"
#include "package/SharedExpansion.h"
#include "profile/ConfigGenerator.h"
#include "profile/ManagementService.h"
#include "project/ProjectReport.h"

#include <QDomDocument>

#include <algorithm>

namespace {

const QLatin1String signOption("sign");

Result<QString> signerOf(const ProjectOutput &output, const Project &project, const PlacedText &identity)
{
    return output.isSet(signOption) ? project.secret(identity) : Result<QString>(QString());
}

Result<> makeDocument(const ProjectOutput &, const OutputSources &sources, const QString &path,
                      QList<FileWarning> &)
{
    const Product &product = *sources.project.product;
    return ConfigDocument::save(
        ConfigDocument::fromSettings(settingsForProduct(sources.settings, product), product, QString()),
        path);
}

const ManagementService *serviceOf(const ProjectOutput &output)
{
    return ManagementService::find(output.option(QLatin1String("for")));
}

ProfileForm profileForm(const ProjectOutput &output, const Project &project)
{
    const ManagementService *service = serviceOf(output);
    ProfileForm form;
    form.style = styleFor(output.option(QLatin1String("style")), service);
    form.displayName = output.option(QLatin1String("display-name"));
    form.organization = project.identity.organization;
    form.description = project.identity.description;
    form.scope = ProfileForm::scopeOf(project.identity.scope);
    form.isRemovalDisallowed = output.isSet(QLatin1String("removal-disallowed"));
    form.hasPayloadVersion = service && service->traits.testFlag(ManagementService::NeedsPayloadVersion);
    form.hasStableUuid = true;
    return form;
}

/// The same in every build, so that a replacement updates in place.
IdentityChoice identityOf(const OutputSources &sources)
{
    const QString identifier = sources.project.identity.prefix + QLatin1Char('.') + sources.variant.name.text;
    return {identifier, {}, true};
}

Result<> makeProfile(const ProjectOutput &output, const OutputSources &sources, const QString &path,
                     QList<FileWarning> &warnings)
{
    const Project &project = sources.project;
    const Result<QString> signer = signerOf(output, project, project.signing.profileIdentity);
    if (!signer)
        return signer.problem();
    ProfileRequest request;
    request.product = project.product;
    request.source.settings = sources.settings;
    request.output = path;
    request.signer = *signer;
    request.identity = identityOf(sources);
    request.form = profileForm(output, project);
    request.service = serviceOf(output);
    ProfileJob job(request);
    const Result<> made = job.run();
    warnings += job.warnings();
    return made;
}

Result<> makePropertyList(const ProjectOutput &output, const OutputSources &sources, const QString &path,
                          QList<FileWarning> &)
{
    const Product &product = *sources.project.product;
    EditorXmlData settings = settingsForProduct(sources.settings, product);
    if (const Result<> settled = identityOf(sources).settle(settings.payloadInfo); !settled)
        return settled;
    const Result<QString> text =
        ConfigGenerator::generateSettings(settings, product, profileForm(output, sources.project),
                                          settingsFormOf(output.option(QLatin1String("form"))));
    if (text)
        return SafeFile::replaceContents(path, text->toUtf8());
    return Problem{path,
                   QStringLiteral("no property list can hold these settings (%1)").arg(text.problem().text)};
}

Result<> makePackage(const ProjectOutput &output, const OutputSources &sources, const QString &path,
                     QList<FileWarning> &warnings)
{
    const Project &project = sources.project;
    const Result<QString> signer = signerOf(output, project, project.signing.packageIdentity);
    if (!signer)
        return signer.problem();
    PackageRequest request;
    request.product = project.product;
    request.input = project.vendor.package.text;
    request.output = path;
    request.settings = sources.settings;
    request.expansion = sources.expansion;
    request.verifies = true; // nobody looks at each of many packages
    request.signing = {*signer, project.signing.anyCertificate, !project.signing.timestamp.isEmpty(),
                       project.signing.timestamp};
    PackageJob job(request);
    const Result<> made = job.run();
    warnings += job.warnings();
    return made;
}

/// The package of a variant is made before what is said of it.
const StampedFile &packageIn(const QList<StampedFile> &files)
{
    return *std::find_if(files.begin(), files.end(),
                         [](const StampedFile &file) { return file.kind == QLatin1String("package"); });
}

QString givenOr(const QString &given, const QString &usual)
{
    return given.isEmpty() ? usual : given;
}

Result<> makePkginfo(const ProjectOutput &output, const OutputSources &sources, const QString &path,
                     QList<FileWarning> &)
{
    const Product &product = *sources.project.product;
    const StampedFile &package = packageIn(sources.files);
    MunkiItem item;
    item.name = givenOr(output.option(QLatin1String("item-name")),
                        product.rootElement + QLatin1Char('-') + sources.variant.name.text);
    item.displayName = product.title;
    item.version = sources.vendorVersion;
    item.catalogs = output.option(QLatin1String("catalogs")).split(QLatin1Char(';'), Qt::SkipEmptyParts);
    item.location =
        givenOr(output.option(QLatin1String("location")), package.path.section(QLatin1Char('/'), -1));
    item.sha256 = package.sha256;
    item.bytes = package.size;
    const Result<> read = item.readExpanded(sources.expansion->folder());
    return read ? SafeFile::replaceContents(path, item.propertyList()) : read;
}

Result<> makeReport(const ProjectOutput &output, const OutputSources &sources, const QString &path,
                    QList<FileWarning> &warnings)
{
    ReportedVariant variant{sources.variant.name.text, sources.settings, sources.files, {}, {}};
    for (const FileWarning &warning : warnings)
        variant.warnings += warning.warning.text;
    const ProjectReport report = reportOn(sources.project, sources.vendorVersion, {variant});
    const QString format = output.option(QLatin1String("format"));
    return SafeFile::replaceContents(path, report.as(ProjectReport::formatNamed(format)));
}

using Maker = Result<> (*)(const ProjectOutput &, const OutputSources &, const QString &,
                           QList<FileWarning> &);

Maker makerOf(const QString &kind)
{
    static const QMap<QString, Maker> makers = {
        {QStringLiteral("document"), makeDocument},  {QStringLiteral("profile"), makeProfile},
        {QStringLiteral("plist"), makePropertyList}, {QStringLiteral("package"), makePackage},
        {QStringLiteral("pkginfo"), makePkginfo},    {QStringLiteral("report"), makeReport}};
    return makers.value(kind);
}

} // namespace

bool isMadeInAnyThread(const ProjectOutput &output)
{
    const QStringList kinds{QStringLiteral("package"), QStringLiteral("pkginfo"), QStringLiteral("report")};
    return kinds.contains(output.kind);
}

Result<> makeOutput(const ProjectOutput &output, const OutputSources &sources, const QString &path,
                    QList<FileWarning> &warnings)
{
    return makerOf(output.kind)(output, sources, path, warnings);
}
