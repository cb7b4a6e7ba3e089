// SPDX-License-Identifier: Apache-2.0
#include "cli/ProjectPlan.h"

#include "cli/Installer.h"
#include "cli/PrivateFolder.h"
#include "cli/SettingsFile.h"
#include "cli/SettingValue.h"
#include "cli/SignatureCheck.h"
#include "config/Product.h"
#include "core/FileDigest.h"
#include "core/NearestWord.h"
#include "core/SafeFile.h"
#include "core/Version.h"
#include "project/ProjectPaths.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

namespace {

/// What is known of the vendor's package, once for all variants.
struct VendorPackage
{
    QByteArray sha256;
    QString version;
};

bool makesPackage(const ProjectVariant &variant)
{
    return variant.has(QLatin1String("package"));
}

bool isWanted(const ProjectVariant &variant, const QStringList &only)
{
    return !variant.isAbstract && (only.isEmpty() || only.contains(variant.name.text));
}

Result<> checkNames(const Project &project, const QStringList &only)
{
    QStringList names;
    for (const ProjectVariant &variant : project.variants) {
        if (!variant.isAbstract)
            names += variant.name.text;
    }
    for (const QString &name : only) {
        if (!names.contains(name))
            return Problem{project.file,
                           QStringLiteral("there is no variant \"%1\"%2; there are %3")
                               .arg(name, nearestHint(name, names), names.join(QStringLiteral(", ")))};
    }
    return {};
}

Result<> checkDigest(const Project &project, const QByteArray &digest)
{
    const PlacedText &wanted = project.vendor.sha256;
    if (wanted.isEmpty() || wanted.text.compare(QString::fromLatin1(digest), Qt::CaseInsensitive) == 0)
        return {};
    return project.wrong(wanted,
                         QStringLiteral("the vendor's package has the SHA-256 %1; get the package again, "
                                        "or look at it and take its digest over")
                             .arg(QString::fromLatin1(digest)));
}

Result<> checkSigner(const Project &project)
{
    const Project::Vendor &vendor = project.vendor;
    if (vendor.signer.isEmpty() && vendor.team.isEmpty())
        return {};
    const SignatureDemands demands{true, vendor.team.text, vendor.anchors.text};
    const Result<SignatureReport> report = signatureOf(vendor.package.text, demands);
    if (!report)
        return report.problem();
    const PlacedText &place = vendor.signer.isEmpty() ? vendor.team : vendor.signer;
    if (const Result<> met = meets(vendor.package.text, *report, demands); !met)
        return project.wrong(place, QStringLiteral("the vendor's package ") + met.problem().text);
    const QString signer = report->chain.first().name;
    return vendor.signer.isEmpty() || signer == vendor.signer.text
               ? Result<>()
               : project.wrong(vendor.signer,
                               QStringLiteral("the vendor's package is signed by \"%1\"").arg(signer));
}

Result<VendorPackage> lookAtVendor(const Project &project)
{
    const PlacedText &package = project.vendor.package;
    if (const Result<> inside = ProjectPaths::checkInput(project.folder, package.text); !inside)
        return project.wrong(package, inside.problem().text);
    const PrivateFolder folder;
    if (const Result<> usable = folder.check(); !usable)
        return usable.problem();
    const InstallerCheck check = checkInstaller(package.text, *project.product,
                                                folder.makeSubfolder(QStringLiteral("inspect")), false);
    if (!check.verdict)
        return project.wrong(package, check.verdict.problem().line());
    const Result<QByteArray> digest = sha256OfFile(package.text);
    if (!digest)
        return digest.problem();
    for (const Result<> &met : {checkDigest(project, *digest), checkSigner(project)}) {
        if (!met)
            return met.problem();
    }
    return VendorPackage{*digest, check.inspection->scripts.version};
}

Result<SettingsFile> readStart(const Project &project, const ProjectVariant &variant)
{
    const PlacedText &config = variant.config;
    if (config.isEmpty())
        return SettingsFile();
    const Result<> inside = ProjectPaths::checkInput(project.folder, config.text);
    if (!inside)
        return project.wrong(config, inside.problem().text);
    Result<SettingsFile> file = readDocument(*project.product, config.text);
    return file ? file : Result<SettingsFile>(project.wrong(config, file.problem().line()));
}

/// Identities stand there as references: what is behind them is nobody's to keep.
QJsonArray signingOf(const ProjectOutput &output, const Project::Signing &signing)
{
    if (!output.isSet(QLatin1String("sign")))
        return {};
    if (output.kind == QLatin1String("profile"))
        return {signing.profileIdentity.text};
    return {signing.packageIdentity.text, signing.timestamp, signing.anyCertificate};
}

QJsonObject outputObject(const ProjectOutput &output, const Project &project)
{
    QJsonObject options;
    for (auto option = output.options.begin(); option != output.options.end(); ++option)
        options.insert(option.key(), option->text);
    const Project::Identity &identity = project.identity;
    const bool isProfile = output.kind == QLatin1String("profile") || output.kind == QLatin1String("plist");
    return {{QStringLiteral("kind"), output.kind},
            {QStringLiteral("path"), output.path.text},
            {QStringLiteral("options"), options},
            {QStringLiteral("identity"), isProfile ? QJsonArray{identity.prefix, identity.organization,
                                                                identity.description, identity.scope}
                                                   : QJsonArray()},
            {QStringLiteral("signing"), signingOf(output, project.signing)}};
}

QJsonObject settingsObject(const EditorXmlData &data)
{
    QJsonObject values;
    for (const Setting &setting : settings())
        values.insert(setting.name, settingValue(setting, data));
    return values;
}

QJsonObject inputsOf(const Project &project, const VariantPlan &plan, const VendorPackage &vendor)
{
    QJsonArray outputs;
    for (const ProjectOutput &output : plan.variant.outputs)
        outputs.append(outputObject(output, project));
    return {{QStringLiteral("tool"), QLatin1String(toolVersion)},
            {QStringLiteral("product"), project.product->word},
            {QStringLiteral("variant"), plan.variant.name.text},
            {QStringLiteral("settings"), settingsObject(plan.settings)},
            {QStringLiteral("outputs"), outputs},
            {QStringLiteral("vendor"), QString::fromLatin1(vendor.sha256)},
            {QStringLiteral("time"), qEnvironmentVariable("SOURCE_DATE_EPOCH")}};
}

QByteArray digestOf(const QJsonObject &object)
{
    const QByteArray bytes = QJsonDocument(object).toJson(QJsonDocument::Compact);
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
}

bool isAsStamped(const Project &project, const StampedFile &stamped)
{
    const Result<StampedFile> file =
        StampedFile::of(stamped.kind, stamped.path, project.folder + QLatin1Char('/') + stamped.path);
    return file && file->size == stamped.size && file->sha256 == stamped.sha256;
}

QStringList changesOf(const Project &project, const VariantPlan &plan)
{
    const std::optional<Stamp> stamp = Stamp::read(project, plan.variant.name.text);
    if (!stamp)
        return {QStringLiteral("it was not made yet")};
    if (stamp->inputs != plan.inputs)
        return {QStringLiteral("what it is made from has changed")};
    QStringList changes;
    for (const StampedFile &file : stamp->files) {
        const QString path = project.folder + QLatin1Char('/') + file.path;
        if (SafeFile::kindOf(path) == SafeFile::Kind::Missing)
            changes += QStringLiteral("%1 is missing").arg(file.path);
        else if (!isAsStamped(project, file))
            changes += QStringLiteral("%1 is not as it was made").arg(file.path);
    }
    return changes;
}

VariantPlan planVariant(const Project &project, const ProjectVariant &variant,
                        const Result<VendorPackage> &vendor)
{
    VariantPlan plan;
    plan.variant = variant;
    const Result<SettingsFile> start = readStart(project, variant);
    if (!start || (makesPackage(variant) && !vendor)) {
        plan.readiness = start ? vendor.problem() : start.problem();
        return plan;
    }
    plan.warnings = start->warnings;
    plan.settings = variant.settings(start->settings, *project.product);
    plan.inputs = digestOf(inputsOf(project, plan, makesPackage(variant) ? *vendor : VendorPackage()));
    plan.changes = changesOf(project, plan);
    return plan;
}

QStringList staleOutputs(const Project &project)
{
    QStringList current;
    for (const ProjectVariant &variant : project.variants) {
        for (const ProjectOutput &output : variant.outputs)
            current += variant.isAbstract ? QString() : output.path.text;
    }
    QStringList stale;
    for (const Stamp &stamp : Stamp::all(project)) {
        for (const QString &path : stamp.paths()) {
            if (!current.contains(path) &&
                SafeFile::kindOf(project.folder + QLatin1Char('/') + path) != SafeFile::Kind::Missing)
                stale += path;
        }
    }
    stale.removeDuplicates();
    return stale;
}

} // namespace

Result<ProjectPlan> planProject(const Project &project, const QStringList &only)
{
    if (const Result<> known = checkNames(project, only); !known)
        return known.problem();
    const bool usesVendor =
        std::any_of(project.variants.begin(), project.variants.end(), [&](const ProjectVariant &variant) {
            return isWanted(variant, only) && makesPackage(variant);
        });
    Result<VendorPackage> vendor = VendorPackage();
    if (usesVendor || (project.needsVendorVersion() && !project.vendor.package.isEmpty()))
        vendor = lookAtVendor(project);
    if (!vendor && project.needsVendorVersion())
        return vendor.problem();
    const Result<Project> named = project.named(vendor ? vendor->version : QString());
    if (!named)
        return named.problem();
    ProjectPlan plan{*named, vendor ? vendor->version : QString(), {}, staleOutputs(*named)};
    for (const ProjectVariant &variant : named->variants) {
        if (isWanted(variant, only))
            plan.variants.append(planVariant(*named, variant, vendor));
    }
    return plan;
}
