// SPDX-License-Identifier: Apache-2.0
#include "cli/ProjectOutputs.h"

#include "cli/PackageJob.h"
#include "cli/ProfileJob.h"
#include "config/ConfigDocument.h"
#include "config/Product.h"
#include "config/ProductSettings.h"
#include "profile/PayloadUuid.h"

#include <QDomDocument>

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

Result<> makeProfile(const ProjectOutput &output, const OutputSources &sources, const QString &path,
                     QList<FileWarning> &warnings)
{
    const Project &project = sources.project;
    const Result<QString> signer = signerOf(output, project, project.signing.profileIdentity);
    if (!signer)
        return signer.problem();
    ProfileRequest request;
    request.product = project.product;
    request.settings = sources.settings;
    request.output = path;
    request.signer = *signer;
    request.identifier = project.identity.prefix + QLatin1Char('.') + sources.variant.name.text;
    request.uuid = stableProfileUuid(request.identifier);
    ProfileJob job(request);
    const Result<> made = job.run();
    warnings += job.warnings();
    return made;
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
    request.signing = {*signer, project.signing.anyCertificate, !project.signing.timestamp.isEmpty(),
                       project.signing.timestamp};
    PackageJob job(request);
    const Result<> made = job.run();
    warnings += job.warnings();
    return made;
}

using Maker = Result<> (*)(const ProjectOutput &, const OutputSources &, const QString &,
                           QList<FileWarning> &);

Maker makerOf(const QString &kind)
{
    static const QMap<QString, Maker> makers = {{QStringLiteral("document"), makeDocument},
                                                {QStringLiteral("profile"), makeProfile},
                                                {QStringLiteral("package"), makePackage}};
    return makers.value(kind);
}

} // namespace

Result<> makeOutput(const ProjectOutput &output, const OutputSources &sources, const QString &path,
                    QList<FileWarning> &warnings)
{
    return makerOf(output.kind)(output, sources, path, warnings);
}
